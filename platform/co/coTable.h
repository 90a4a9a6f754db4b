// The hashed table from key to value.
#pragma once

#include "coHash.h"
#include "coSizing.h"
#include "utExport.h"

#include <cstddef>
#include <list>
#include <unordered_map>

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
/// A table of pointers never owns what they point to, unless they are coPrg.
template <class Key, class Value, class NullKey = coNoNullKey>
class coTable
{
public:
    struct Entry
    {
        Key const key;
        Value value;
    };
    using const_iterator = typename std::list<Entry>::const_iterator;

    /// An empty table. See coSizing for the two numbers.
    coTable(int initial_size, int fill_limit) : m_sizing(initial_size, fill_limit) { size_index(); }

    coTable(coTable const& other) : m_sizing(other.m_sizing) { assign(other); }
    coTable& operator=(coTable const& other)
    {
        if (this != &other)
            assign(other);
        return *this;
    }

    std::size_t size() const { return m_entries.size(); }
    int empty() const { return m_entries.empty() ? 1 : 0; }

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
        return found == m_index.end() ? nullptr : &found->second->value;
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
        auto const [at, added] = m_index.try_emplace(key);
        if (added)
            at->second = m_entries.insert(m_entries.end(), Entry{key, Value{}});
        return at->second->value;
    }

    /// Takes the key out, and nothing else: what its value points to stays, unless it is a coPrg.
    /// @return 1, or 0 when the table does not hold the key
    int remove(Key const& key)
    {
        auto const found = m_index.find(key);
        if (found == m_index.end())
            return 0;
        m_entries.erase(found->second);
        m_index.erase(found);
        return 1;
    }

    void clear()
    {
        m_index.clear();
        m_entries.clear();
    }

    const_iterator begin() const { return m_entries.begin(); }
    const_iterator end() const { return m_entries.end(); }

private:
    void assign(coTable const& other)
    {
        clear();
        m_sizing = other.m_sizing;
        size_index();
        for (Entry const& entry : other)
            (*this)[entry.key] = entry.value;
    }

    void size_index()
    {
        m_index.max_load_factor(m_sizing.load_factor);
        m_index.reserve(m_sizing.entries);
    }

    coSizing m_sizing;
    std::list<Entry> m_entries;
    std::unordered_map<Key, typename std::list<Entry>::iterator, coBucketHash<Key>> m_index;
};
