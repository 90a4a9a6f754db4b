#include "coIndex.h"

#include <bit>
#include <utility>

coIndex::coIndex(int initial_size, int fill_limit)
    : m_fill_limit(coSizing(initial_size, fill_limit).load_factor)
{
    auto const entries = static_cast<float>(coSizing(initial_size, fill_limit).entries);
    m_slots.resize(std::bit_ceil(static_cast<std::size_t>(entries / m_fill_limit) + 1));
}

void coIndex::count_one_more()
{
    ++m_used;
    if (static_cast<float>(m_used) < static_cast<float>(m_slots.size()) * m_fill_limit)
        return;
    std::vector<Slot> const old = std::exchange(m_slots, std::vector<Slot>(2 * m_slots.size()));
    auto const none = [](int) { return false; };
    for (Slot const& slot : old)
        if (slot.position >= 0)
            m_slots[slot_of(slot.hash, none)] = slot;
}
