// Where in an array something stands.
#pragma once

#include "coSizing.h"
#include "utExport.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Positions from 0 on, found by a hash of what stands there.
///
/// The array and the comparison are the caller's, so what is looked up by is kept once, and looking it up
/// among very many touches little memory. The hash should be one of coHash's, spread over all its bits.
class UT_API coIndex
{
public:
    /// An empty index. See coSizing for the two numbers.
    coIndex(int initial_size, int fill_limit);

    /// @param same  is asked of positions with this hash whether what is sought stands there
    /// @return the position, or -1 when there is none
    template <class Same>
    int find(std::uint32_t hash, Same const& same) const
    {
        return m_slots[slot_of(hash, same)].position;
    }

    /// Enters a position, in the place of the one that find() gives.
    template <class Same>
    void set(std::uint32_t hash, int position, Same const& same)
    {
        Slot& slot = m_slots[slot_of(hash, same)];
        bool const added = slot.position < 0;
        slot = {hash, position};
        if (added)
            count_one_more();
    }

private:
    struct Slot
    {
        std::uint32_t hash = 0;
        int position = -1;
    };

    /// The slot that holds what is sought, or else the one to put it into.
    template <class Same>
    std::size_t slot_of(std::uint32_t hash, Same const& same) const
    {
        std::size_t at = hash & (m_slots.size() - 1);
        while (m_slots[at].position >= 0 && !(m_slots[at].hash == hash && same(m_slots[at].position)))
            at = (at + 1) & (m_slots.size() - 1);
        return at;
    }

    void count_one_more();

    std::vector<Slot> m_slots; ///< as many as a power of two, of which one at least is free
    std::size_t m_used = 0;
    float m_fill_limit;
};
