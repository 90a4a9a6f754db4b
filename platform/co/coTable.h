// The hashed table from key to value.
#pragma once

#include "coHash.h"
#include "coIndex.h"
#include "utExport.h"

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <optional>
#include <utility>
#include <vector>

/// For tables whose every key is an ordinary one.
struct coNoNullKey
{
    template <class Key>
    static bool is_null(Key const&)
    {
        return false;
    }
};

/// For tables keyed by hash values or counts: 0 stands for no key. It is reported where it is looked up, and
/// served like any other.
struct coZeroIsNullKey
{
    static bool is_null(int key) { return key == 0; }
};

/// @report "argument out of range | CO_TABLE::member | null key"
UT_API void co_report_null_key_member();
/// @report "argument out of range | CO_TABLE::read | null key"
UT_API void co_report_null_key_read();

/// Entries, handed out in the order in which their keys were first set; a key set again keeps its place.
///
/// Entering a key and removing one leave no reference to a value and no iterator good.
/// A table of pointers never owns what they point to, unless they are coPrg.
template <class Key, class Value, class NullKey = coNoNullKey>
class coTable
{
public:
    struct Entry
    {
        Key key;
        Value value;
    };

private:
    // Entries stand one after the other, so that a walk over many is fast; one removed leaves its place
    // empty.
    using Places = std::vector<std::optional<Entry>>;

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
        const_iterator(typename Places::const_iterator place, typename Places::const_iterator end)
            : m_place(place), m_end(end)
        {
            pass_over_empty();
        }

        Entry const& operator*() const { return **m_place; }
        Entry const* operator->() const { return &**m_place; }
        const_iterator& operator++()
        {
            ++m_place;
            pass_over_empty();
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator const before = *this;
            ++*this;
            return before;
        }
        bool operator==(const_iterator const& other) const { return m_place == other.m_place; }

    private:
        void pass_over_empty()
        {
            while (m_place != m_end && !*m_place)
                ++m_place;
        }

        typename Places::const_iterator m_place;
        typename Places::const_iterator m_end;
    };

    /// An empty table. See coSizing for the two numbers.
    coTable(int initial_size, int fill_limit) : m_index(initial_size, fill_limit) {}

    coTable(coTable const&) = default;
    coTable& operator=(coTable const& other)
    {
        coTable copy(other);
        m_places.swap(copy.m_places);
        std::swap(m_first, copy.m_first);
        std::swap(m_index, copy.m_index);
        return *this;
    }

    std::size_t size() const { return m_index.size(); }
    int empty() const { return size() == 0 ? 1 : 0; }

    /// 1 when the table holds the key.
    /// @report "argument out of range | CO_TABLE::member | null key" for the null key
    int member(Key const& key) const
    {
        if (NullKey::is_null(key))
            co_report_null_key_member();
        return find(key) ? 1 : 0;
    }

    /// The value of the key, or null when the table does not hold it; reports nothing.
    Value const* find(Key const& key) const
    {
        int const number = number_of(key);
        return number < 0 ? nullptr : &place(number)->value;
    }

    /// The value of the key, or a default one (null for a pointer) when the table does not hold it.
    /// @report "argument out of range | CO_TABLE::read | null key" for the null key
    Value const& read(Key const& key) const
    {
        static Value const missing{};
        if (NullKey::is_null(key))
            co_report_null_key_read();
        Value const* const found = find(key);
        return found ? *found : missing;
    }

    /// The value of the key, which is entered with a default value when the table does not hold it.
    Value& operator[](Key const& key)
    {
        int const number = number_of(key);
        return number < 0 ? add(key) : place(number)->value;
    }

    /// Takes the key out, and nothing else: what its value points to stays, unless it is a coPrg.
    /// @return 1, or 0 when the table does not hold the key
    int remove(Key const& key)
    {
        int const number = number_of(key);
        if (number < 0)
            return 0;
        m_index.remove(hash_of(key), [number](int each) { return each == number; });
        place(number).reset();
        drop_empty_places();
        return 1;
    }

    void clear()
    {
        m_index.clear();
        m_places.clear();
        m_first = 0;
    }

    const_iterator begin() const
    {
        return const_iterator(m_places.begin() + static_cast<std::ptrdiff_t>(m_first), m_places.end());
    }
    const_iterator end() const { return const_iterator(m_places.end(), m_places.end()); }

private:
    static std::uint32_t hash_of(Key const& key)
    {
        return static_cast<std::uint32_t>(coBucketHash<Key>()(key));
    }

    /// The number of the key's place, or -1.
    int number_of(Key const& key) const
    {
        return m_index.find(hash_of(key), [&](int number) { return place(number)->key == key; });
    }

    std::optional<Entry> const& place(int number) const { return m_places[static_cast<std::size_t>(number)]; }
    std::optional<Entry>& place(int number) { return m_places[static_cast<std::size_t>(number)]; }

    /// Enters a key that the table does not hold.
    Value& add(Key const& key)
    {
        m_index.reserve_one();
        m_places.emplace_back(Entry{key, Value{}});
        Entry& added = *m_places.back();
        m_index.set(hash_of(added.key), static_cast<int>(m_places.size()) - 1, coIndex::none);
        return added.value;
    }

    /// At either end at once; those between when they are the most, so that the way over them stays short.
    void drop_empty_places()
    {
        while (m_first < m_places.size() && !m_places[m_first])
            ++m_first;
        while (m_places.size() > m_first && !m_places.back())
            m_places.pop_back();
        if (m_places.size() > 2 * size())
            close_up();
    }

    void close_up()
    {
        std::size_t kept = 0;
        for (std::size_t i = m_first; i < m_places.size(); ++i) {
            if (!m_places[i])
                continue;
            auto const is_this = [i](int number) { return static_cast<std::size_t>(number) == i; };
            m_index.set(hash_of(m_places[i]->key), static_cast<int>(kept), is_this);
            if (kept != i)
                m_places[kept] = std::exchange(m_places[i], std::nullopt);
            ++kept;
        }
        m_places.resize(kept);
        m_first = 0;
    }

    Places m_places;
    std::size_t m_first = 0; ///< place that is not empty, or where the next one will be
    coIndex m_index;         ///< of the places, by their keys
};
