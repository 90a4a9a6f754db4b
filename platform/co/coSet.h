// The hashed set.
#pragma once

#include "coHash.h"
#include "coOrdered.h"

#include <algorithm>
#include <cstddef>

/// Members, handed out in the order in which they were added.
///
/// Two members are the same when their `co_hash` is equal and then `operator==` says so. Where many different
/// members share a `co_hash`, a function `co_bucket_hash(T const&)` found beside T keeps the set fast: a
/// std::size_t that is equal for members that compare equal, by coBucketHash where strangers choose the
/// members.
template <class T>
class coSet
{
public:
    /// An empty set. See coOrdered for the two numbers.
    coSet(int initial_size, int fill_limit) : m_members(initial_size, fill_limit) {}

    std::size_t size() const { return m_members.size(); }
    int empty() const { return size() == 0 ? 1 : 0; }

    /// Adds a copy of @p added; where the set holds the same one already, that one stays.
    void add(T const& added)
    {
        if (!member(added))
            m_members.add(hash_of(added), added);
    }

    /// 1 when the set holds the same member.
    int member(T const& sought) const
    {
        auto const same = [&](T const& each) {
            // A member's operator== may lack its const.
            return co_hash(each) == co_hash(sought) && const_cast<T&>(each) == sought;
        };
        return m_members.find(hash_of(sought), same) ? 1 : 0;
    }

    void clear() { m_members.clear(); }

    /// Equal numbers of members, and every one of this set is in the other.
    bool operator==(coSet const& other) const
    {
        return size() == other.size() &&
               std::all_of(begin(), end(), [&](T const& each) { return other.member(each) != 0; });
    }

    auto begin() const { return m_members.begin(); }
    auto end() const { return m_members.end(); }

private:
    static std::size_t hash_of(T const& member)
    {
        std::size_t const hash = co_bucket_of_number(co_hash(member));
        if constexpr (requires { co_bucket_hash(member); })
            return hash + static_cast<std::size_t>(co_bucket_hash(member));
        else
            return hash;
    }

    coOrdered<T> m_members;
};
