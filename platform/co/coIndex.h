// Where in an array something stands.
#pragma once

#include "coSizing.h"
#include "utExport.h"

#include <cstddef>
#include <cstdint>
#include <vector>

/// Positions, from 0 on, found by a hash of what stands there.
///
/// The array and the comparison are the caller's, so what is looked up by is kept once, and looking it up
/// among very many touches little memory. The hash should be one of coHash's, spread over all its bits.
class UT_API coIndex
{
public:
    /// An empty index. See coSizing for the two numbers.
    coIndex(int initial_size, int fill_limit);

    /// For set(), where what is entered is not there yet.
    static bool none(int) { return false; }

    /// @param same  is asked of positions with this hash whether what is sought stands there
    /// @return the position, or -1 when there is none
    template <class Same>
    int find(std::uint32_t hash, Same const& same) const
    {
        return m_slots[slot_of(hash, same)].position;
    }

    /// Makes room, so that the next set() needs no memory.
    void reserve_one()
    {
        if (m_used >= m_most)
            grow();
    }

    /// Enters a position, in the place of the one that find() gives. Where memory runs out, nothing has
    /// changed.
    template <class Same>
    void set(std::uint32_t hash, int position, Same const& same)
    {
        reserve_one();
        Slot& slot = m_slots[slot_of(hash, same)];
        m_used += slot.position < 0 ? 1 : 0;
        slot = {hash, position};
    }

    /// Takes out the position that find() gives, if there is one.
    template <class Same>
    void remove(std::uint32_t hash, Same const& same)
    {
        std::size_t const at = slot_of(hash, same);
        if (m_slots[at].position < 0)
            return;
        --m_used;
        close_gap(at);
    }

    std::size_t size() const { return m_used; }
    void clear();

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

    void grow();
    /// @return the slots that there were
    std::vector<Slot> take(std::vector<Slot> slots);
    void close_gap(std::size_t gap);

    float m_fill_limit;
    std::vector<Slot> m_slots; ///< as many as a power of two, of which one at least is free
    std::size_t m_used = 0;
    std::size_t m_most = 0; ///< slots in use before there are more of them
};
