// The hashed structure below tables and sets.
#pragma once

#include <algorithm>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

/// Entries in the order in which they were added, each found by its hash and a further test.
///
/// The entries stand one after the other, so that a walk is fast, and an open-addressing table of their hashes and
/// positions finds them. The standard hashed containers took three to four times as long to find a colour by its
/// name, and twice as long for the image cache's evictions. A removed entry stays, empty, until the next rebuild.
///
/// Adding or removing an entry invalidates references and iterators.
template <class Entry>
class coOrdered
{
    struct Node
    {
        Entry entry;
        std::uint32_t hash;
        bool removed = false;
    };
    using Nodes = std::vector<Node>;

public:
    class const_iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = Entry const*;
        using reference = Entry const&;

        const_iterator() = default;
        const_iterator(typename Nodes::const_iterator node, typename Nodes::const_iterator end)
            : m_node(node), m_end(end)
        {
            skip_removed();
        }

        Entry const& operator*() const { return m_node->entry; }
        Entry const* operator->() const { return &m_node->entry; }
        const_iterator& operator++()
        {
            ++m_node;
            skip_removed();
            return *this;
        }
        const_iterator operator++(int)
        {
            return std::exchange(*this, const_iterator(std::next(m_node), m_end));
        }
        bool operator==(const_iterator const& other) const { return m_node == other.m_node; }

    private:
        void skip_removed()
        {
            while (m_node != m_end && m_node->removed)
                ++m_node;
        }

        typename Nodes::const_iterator m_node;
        typename Nodes::const_iterator m_end;
    };

    /// The two numbers change the speed and the memory, nothing else.
    /// @param initial_size  number of entries to make room for; a negative one counts as 0
    /// @param fill_limit    highest share of slots in use, in per cent; clamped to 1 to 99
    coOrdered(int initial_size, int fill_limit)
        : m_fill_limit(static_cast<std::size_t>(std::clamp(fill_limit, 1, 99)))
    {
        rebuild(static_cast<std::size_t>(std::max(initial_size, 0)));
    }

    coOrdered(coOrdered const&) = default;

    /// Changes nothing when memory runs out.
    coOrdered& operator=(coOrdered const& other)
    {
        Nodes nodes(other.m_nodes);
        m_slots = other.m_slots;
        m_nodes.swap(nodes);
        m_fill_limit = other.m_fill_limit;
        m_removed = other.m_removed;
        m_room = other.m_room;
        return *this;
    }

    std::size_t size() const { return m_nodes.size() - m_removed; }

    /// @param hash  well spread over its 32 bits; see coHash.h
    /// @param same  is asked of the entries with this hash whether they are the sought one
    /// @return the entry, or null
    template <class Same>
    Entry const* find(std::size_t hash, Same const& same) const
    {
        std::size_t const at = position_of(static_cast<std::uint32_t>(hash), same);
        return at == none ? nullptr : &m_nodes[at].entry;
    }

    /// Makes room for one entry: adding the next one needs no memory beside the entry's own, whatever is removed before.
    void make_room()
    {
        if (m_nodes.size() >= m_room)
            rebuild(size() + size() / 2 + 1);
        if (m_nodes.size() == m_nodes.capacity())
            m_nodes.reserve(2 * m_nodes.size() + 1);
    }

    /// Appends an entry without looking for one like it. Changes nothing when memory runs out.
    Entry& add(std::size_t hash, Entry entry)
    {
        if (m_nodes.size() >= m_room)
            rebuild(size() + size() / 2 + 1);
        m_nodes.push_back({std::move(entry), static_cast<std::uint32_t>(hash)});
        enter(m_nodes.size() - 1);
        return m_nodes.back().entry;
    }

    /// Removes the entry that find() gives.
    /// @return 1, or 0 when find() gives null
    template <class Same>
    int remove(std::size_t hash, Same const& same)
    {
        std::size_t const at = position_of(static_cast<std::uint32_t>(hash), same);
        if (at == none)
            return 0;
        m_nodes[at] = {Entry{}, m_nodes[at].hash, true};
        ++m_removed;
        if (m_removed > size())
            rebuild(size());
        return 1;
    }

    void clear()
    {
        m_nodes.clear();
        rebuild(0);
    }

    const_iterator begin() const { return const_iterator(m_nodes.begin(), m_nodes.end()); }
    const_iterator end() const { return const_iterator(m_nodes.end(), m_nodes.end()); }

private:
    static constexpr auto none = static_cast<std::size_t>(-1);

    struct Slot
    {
        std::uint32_t hash = 0;
        int position = -1; ///< in the nodes; -1 when the slot is free
    };

    template <class Same>
    std::size_t position_of(std::uint32_t hash, Same const& same) const
    {
        std::size_t const mask = m_slots.size() - 1;
        for (std::size_t at = hash & mask; m_slots[at].position >= 0; at = (at + 1) & mask) {
            if (m_slots[at].hash != hash)
                continue;
            auto const position = static_cast<std::size_t>(m_slots[at].position);
            if (!m_nodes[position].removed && same(m_nodes[position].entry))
                return position;
        }
        return none;
    }

    /// Enters the node at a position into the first slot, from the one of its hash on, that is free or belongs to a
    /// removed node.
    void enter(std::size_t position)
    {
        std::size_t const mask = m_slots.size() - 1;
        std::uint32_t const hash = m_nodes[position].hash;
        std::size_t at = hash & mask;
        auto const is_taken = [&](int taken) {
            return taken >= 0 && !m_nodes[static_cast<std::size_t>(taken)].removed;
        };
        while (is_taken(m_slots[at].position))
            at = (at + 1) & mask;
        m_slots[at] = {hash, static_cast<int>(position)};
    }

    /// Makes slots for a number of entries, at least as many as there are, and drops the removed nodes. Needs no
    /// memory for fewer slots than before.
    void rebuild(std::size_t entries)
    {
        m_slots.assign(std::bit_ceil(entries * 100 / m_fill_limit + 1), Slot());
        m_room = m_slots.size() * m_fill_limit / 100;
        std::erase_if(m_nodes, [](Node const& node) { return node.removed; });
        m_removed = 0;
        for (std::size_t i = 0; i < m_nodes.size(); ++i)
            enter(i);
    }

    std::size_t m_fill_limit; ///< in per cent
    Nodes m_nodes;
    std::size_t m_removed = 0; ///< nodes of removed entries
    std::vector<Slot> m_slots; ///< a power of two of them, at least one free
    std::size_t m_room = 0;    ///< nodes that the slots can take
};
