// The hashed table from key to value.
#pragma once

#include "coHash.h"
#include "coOrdered.h"
#include "utExport.h"
#include "utNeverDestroyed.h"

#include <cstddef>

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
/// Adding and removing a key leave no reference to a value and no iterator valid.
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

    /// An empty table. See coOrdered for the two numbers.
    coTable(int initial_size, int fill_limit) : m_entries(initial_size, fill_limit) {}

    std::size_t size() const { return m_entries.size(); }
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
        Entry const* const entry = m_entries.find(hash_of(key), has(key));
        return entry ? &entry->value : nullptr;
    }

    /// The value of the key, or a default one (null for a pointer) when the table does not hold it.
    /// @report "argument out of range | CO_TABLE::read | null key" for the null key
    Value const& read(Key const& key) const
    {
        static utNeverDestroyed<Value> const missing;
        if (NullKey::is_null(key))
            co_report_null_key_read();
        Value const* const found = find(key);
        return found ? *found : *missing;
    }

    /// The value of the key, which is entered with a default value when the table does not hold it.
    Value& operator[](Key const& key)
    {
        if (Value const* const found = find(key))
            return const_cast<Value&>(*found);
        return m_entries.add(hash_of(key), Entry{key, Value{}}).value;
    }

    /// Makes room for one key: entering the next one needs no memory beside its own and its value's, whatever is
    /// removed before.
    void make_room() { m_entries.make_room(); }

    /// Takes the key out, and nothing else: what its value points to stays, unless it is a coPrg.
    /// @return 1, or 0 when the table does not hold the key
    int remove(Key const& key) { return m_entries.remove(hash_of(key), has(key)); }

    void clear() { m_entries.clear(); }

    auto begin() const { return m_entries.begin(); }
    auto end() const { return m_entries.end(); }

private:
    static std::size_t hash_of(Key const& key) { return coBucketHash<Key>()(key); }
    static auto has(Key const& key)
    {
        return [&key](Entry const& entry) { return entry.key == key; };
    }

    coOrdered<Entry> m_entries;
};
