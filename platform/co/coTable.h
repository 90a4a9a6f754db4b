// The hashed table from key to value.
#pragma once

#include "coHash.h"
#include "coSizing.h"
#include "utExport.h"

#include <cstddef>
#include <deque>
#include <iterator>
#include <optional>
#include <unordered_map>
#include <utility>

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
/// Entering a key leaves references to values good, but no iterator; removing one leaves neither.
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
    using Places = std::deque<std::optional<Entry>>;

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
    coTable(int initial_size, int fill_limit) : m_sizing(initial_size, fill_limit) { size_index(); }

    coTable(coTable const& other) : m_sizing(other.m_sizing) { assign(other); }
    coTable& operator=(coTable const& other)
    {
        if (this != &other)
            assign(other);
        return *this;
    }

    std::size_t size() const { return m_index.size(); }
    int empty() const { return m_index.empty() ? 1 : 0; }

    /// 1 when the table holds the key.
    /// @report "argument out of range | CO_TABLE::member | null key" for the null key
    int member(Key const& key) const
    {
        if (NullKey::is_null(key))
            co_report_null_key_member();
        return m_index.contains(key) ? 1 : 0;
    }

    /// The value of the key, or null when the table does not hold it; reports nothing.
    Value const* find(Key const& key) const
    {
        auto const found = m_index.find(key);
        return found == m_index.end() ? nullptr : &m_places[found->second - m_first]->value;
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
        auto const [at, added] = m_index.try_emplace(key, m_first + m_places.size());
        if (added)
            try {
                m_places.emplace_back(Entry{key, Value{}});
            } catch (...) {
                m_index.erase(at);
                throw;
            }
        return m_places[at->second - m_first]->value;
    }

    /// Takes the key out, and nothing else: what its value points to stays, unless it is a coPrg.
    /// @return 1, or 0 when the table does not hold the key
    int remove(Key const& key)
    {
        auto const found = m_index.find(key);
        if (found == m_index.end())
            return 0;
        m_places[found->second - m_first].reset();
        m_index.erase(found);
        drop_empty_places();
        return 1;
    }

    void clear()
    {
        m_index.clear();
        m_places.clear();
    }

    const_iterator begin() const { return const_iterator(m_places.begin(), m_places.end()); }
    const_iterator end() const { return const_iterator(m_places.end(), m_places.end()); }

private:
    void assign(coTable const& other)
    {
        clear();
        m_sizing = other.m_sizing;
        size_index();
        for (Entry const& entry : other)
            (*this)[entry.key] = entry.value;
    }

    /// At either end at once; those between when they are the most, so that the way over them stays short.
    void drop_empty_places()
    {
        for (; !m_places.empty() && !m_places.front(); ++m_first)
            m_places.pop_front();
        while (!m_places.empty() && !m_places.back())
            m_places.pop_back();
        if (m_places.size() > 2 * m_index.size())
            close_up();
    }

    void close_up()
    {
        std::size_t kept = 0;
        for (std::size_t i = 0; i < m_places.size(); ++i) {
            if (!m_places[i])
                continue;
            m_index.find(m_places[i]->key)->second = m_first + kept;
            if (i != kept)
                m_places[kept] = std::exchange(m_places[i], std::nullopt);
            ++kept;
        }
        while (m_places.size() > kept)
            m_places.pop_back();
    }

    void size_index()
    {
        m_index.max_load_factor(m_sizing.load_factor);
        m_index.reserve(m_sizing.entries);
    }

    coSizing m_sizing;
    Places m_places;
    /// The number of the first place; each place after it has one more.
    std::size_t m_first = 0;
    std::unordered_map<Key, std::size_t, coBucketHash<Key>> m_index;
};
