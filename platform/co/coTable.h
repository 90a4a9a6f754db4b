// The hashed table from key to value.
#pragma once

#include "coHash.h"
#include "coSizing.h"
#include "utExport.h"

#include <cstddef>
#include <iterator>
#include <unordered_set>

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

private:
    // An entry is one node of memory, which belongs to the set of them and stands in a chain beside: so
    // looking a key up touches little memory, which is what takes the time in large tables.
    struct Node
    {
        explicit Node(Key const& key) : entry{key, Value{}} {}

        mutable Entry entry;
        mutable Node const* before = nullptr;
        mutable Node const* after = nullptr;
    };

public:
    class const_iterator
    {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = Entry;
        using difference_type = std::ptrdiff_t;
        using pointer = Entry const*;
        using reference = Entry const&;

        explicit const_iterator(Node const* node = nullptr) : m_node(node) {}
        Entry const& operator*() const { return m_node->entry; }
        Entry const* operator->() const { return &m_node->entry; }
        const_iterator& operator++()
        {
            m_node = m_node->after;
            return *this;
        }
        const_iterator operator++(int)
        {
            const_iterator const old = *this;
            ++*this;
            return old;
        }
        bool operator==(const_iterator const&) const = default;

    private:
        Node const* m_node;
    };

    /// An empty table. See coSizing for the two numbers.
    coTable(int initial_size, int fill_limit) : m_sizing(initial_size, fill_limit) { size_nodes(); }

    coTable(coTable const& other) : m_sizing(other.m_sizing) { assign(other); }
    coTable& operator=(coTable const& other)
    {
        if (this != &other)
            assign(other);
        return *this;
    }

    std::size_t size() const { return m_nodes.size(); }
    int empty() const { return m_nodes.empty() ? 1 : 0; }

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
        auto const found = m_nodes.find(key);
        return found == m_nodes.end() ? nullptr : &found->entry.value;
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
        auto found = m_nodes.find(key);
        if (found == m_nodes.end()) {
            found = m_nodes.emplace(key).first;
            append(*found);
        }
        return found->entry.value;
    }

    /// Takes the key out, and nothing else: what its value points to stays, unless it is a coPrg.
    /// @return 1, or 0 when the table does not hold the key
    int remove(Key const& key)
    {
        auto const found = m_nodes.find(key);
        if (found == m_nodes.end())
            return 0;
        (found->before ? found->before->after : m_first) = found->after;
        (found->after ? found->after->before : m_last) = found->before;
        m_nodes.erase(found);
        return 1;
    }

    void clear()
    {
        m_nodes.clear();
        m_first = m_last = nullptr;
    }

    const_iterator begin() const { return const_iterator(m_first); }
    const_iterator end() const { return const_iterator(); }

private:
    /// Hashes and compares keys, be they in a node or not.
    struct ByKey
    {
        using is_transparent = void;

        static Key const& key_of(Node const& node) { return node.entry.key; }
        static Key const& key_of(Key const& key) { return key; }

        template <class T>
        std::size_t operator()(T const& keyed) const
        {
            return coBucketHash<Key>()(key_of(keyed));
        }

        template <class T, class U>
        bool operator()(T const& a, U const& b) const
        {
            return key_of(a) == key_of(b);
        }
    };

    void append(Node const& node)
    {
        node.before = m_last;
        (m_last ? m_last->after : m_first) = &node;
        m_last = &node;
    }

    void assign(coTable const& other)
    {
        clear();
        m_sizing = other.m_sizing;
        size_nodes();
        for (Entry const& entry : other)
            (*this)[entry.key] = entry.value;
    }

    void size_nodes()
    {
        m_nodes.max_load_factor(m_sizing.load_factor);
        m_nodes.reserve(m_sizing.entries);
    }

    coSizing m_sizing;
    std::unordered_set<Node, ByKey, ByKey> m_nodes;
    Node const* m_first = nullptr;
    Node const* m_last = nullptr;
};
