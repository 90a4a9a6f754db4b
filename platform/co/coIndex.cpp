#include "coIndex.h"

#include <bit>

coIndex::coIndex(int initial_size, int fill_limit)
    : m_fill_limit(coSizing(initial_size, fill_limit).load_factor)
{
    auto const entries = static_cast<float>(coSizing(initial_size, fill_limit).entries);
    take(std::vector<Slot>(std::bit_ceil(static_cast<std::size_t>(entries / m_fill_limit) + 1)));
}

void coIndex::clear()
{
    m_slots.assign(m_slots.size(), Slot());
    m_used = 0;
}

void coIndex::grow()
{
    std::vector<Slot> const old = take(std::vector<Slot>(2 * m_slots.size()));
    for (Slot const& slot : old)
        if (slot.position >= 0)
            m_slots[slot_of(slot.hash, none)] = slot;
}

std::vector<coIndex::Slot> coIndex::take(std::vector<Slot> slots)
{
    m_most = static_cast<std::size_t>(static_cast<float>(slots.size()) * m_fill_limit);
    m_slots.swap(slots);
    return slots;
}

// A search ends at a free slot. So each slot behind the gap, up to the next free one, moves into it, unless
// that would be before the slot where its own search begins; then the gap is where it stood.
void coIndex::close_gap(std::size_t gap)
{
    std::size_t const mask = m_slots.size() - 1;
    for (std::size_t at = (gap + 1) & mask; m_slots[at].position >= 0; at = (at + 1) & mask) {
        std::size_t const way_from_begin = (at - m_slots[at].hash) & mask;
        std::size_t const way_from_gap = (at - gap) & mask;
        if (way_from_begin < way_from_gap)
            continue;
        m_slots[gap] = m_slots[at];
        gap = at;
    }
    m_slots[gap] = Slot();
}
