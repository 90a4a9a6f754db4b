// The hashed set.
#pragma once

#include "coHash.h"
#include "coSizing.h"

#include <cstddef>
#include <cstdint>
#include <list>
#include <unordered_map>

/// Members, handed out in the order in which they were added.
///
/// Two members are the same when their `co_hash` is equal and, that being so, `operator==` says so. Where
/// many different members share a `co_hash`, a function `co_bucket_hash(T const&)` found beside T keeps the
/// set fast: a std::size_t that is equal for members that compare equal, by coBucketHash where strangers
/// choose the members.
template <class T>
class coSet
{
    struct Node
    {
        T member;
        std::uint32_t hash;
    };

public:
    class const_iterator
    {
    public:
        explicit const_iterator(typename std::list<Node>::const_iterator node) : m_node(node) {}
        T const& operator*() const { return m_node->member; }
        T const* operator->() const { return &m_node->member; }
        const_iterator& operator++()
        {
            ++m_node;
            return *this;
        }
        bool operator==(const_iterator const&) const = default;

    private:
        typename std::list<Node>::const_iterator m_node;
    };

    /// An empty set. See coSizing for the two numbers.
    coSet(int initial_size, int fill_limit) : m_sizing(initial_size, fill_limit) { size_index(); }

    coSet(coSet const& other) : m_sizing(other.m_sizing) { assign(other); }
    coSet& operator=(coSet const& other)
    {
        if (this != &other)
            assign(other);
        return *this;
    }

    std::size_t size() const { return m_nodes.size(); }
    int empty() const { return m_nodes.empty() ? 1 : 0; }

    /// Adds a copy of @p member; where the set holds the same one already, that one stays.
    void add(T const& member)
    {
        std::uint32_t const hash = co_hash(member);
        std::size_t const bucket = bucket_of(member, hash);
        if (!find(member, hash, bucket))
            insert(member, hash, bucket);
    }

    /// 1 when the set holds the same member.
    int member(T const& sought) const
    {
        std::uint32_t const hash = co_hash(sought);
        return find(sought, hash, bucket_of(sought, hash)) ? 1 : 0;
    }

    void clear()
    {
        m_index.clear();
        m_nodes.clear();
    }

    /// Equal numbers of members, and every one of this set is in the other.
    bool operator==(coSet const& other) const
    {
        if (size() != other.size())
            return false;
        for (T const& each : *this)
            if (!other.member(each))
                return false;
        return true;
    }

    const_iterator begin() const { return const_iterator(m_nodes.begin()); }
    const_iterator end() const { return const_iterator(m_nodes.end()); }

private:
    static std::size_t bucket_of(T const& member, std::uint32_t hash)
    {
        if constexpr (requires { co_bucket_hash(member); })
            return static_cast<std::size_t>(co_bucket_hash(member)) + co_bucket_of_number(hash);
        else
            return co_bucket_of_number(hash);
    }

    bool find(T const& sought, std::uint32_t hash, std::size_t bucket) const
    {
        auto const [first, last] = m_index.equal_range(bucket);
        for (auto at = first; at != last; ++at)
            if (at->second->hash == hash && at->second->member == sought)
                return true;
        return false;
    }

    void insert(T const& member, std::uint32_t hash, std::size_t bucket)
    {
        m_nodes.push_back(Node{member, hash});
        m_index.emplace(bucket, &m_nodes.back());
    }

    void assign(coSet const& other)
    {
        clear();
        m_sizing = other.m_sizing;
        size_index();
        for (Node const& node : other.m_nodes)
            insert(node.member, node.hash, bucket_of(node.member, node.hash));
    }

    void size_index()
    {
        m_index.max_load_factor(m_sizing.load_factor);
        m_index.reserve(m_sizing.entries);
    }

    coSizing m_sizing;
    std::list<Node> m_nodes;
    std::unordered_multimap<std::size_t, Node*> m_index;
};
