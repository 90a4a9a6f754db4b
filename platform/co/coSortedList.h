// The sorted list.
#pragma once

#include "utExport.h"

#include <cstddef>
#include <iterator>
#include <set>

/// @report "object in incorrect state for operation |CO_SORTEDLIST::remove_last | empty"
UT_API void co_report_sorted_list_empty();

/// Elements in ascending order, which `int T::compare(T const&) const` gives: below 0, 0, or above 0.
///
/// Elements that compare equal are all kept, the one added last before the others. What an element compares by
/// may change while nothing is added; the order stays that of when the elements were added.
template <class T>
class coSortedList
{
    struct Less
    {
        bool operator()(T const& one, T const& other) const { return one.compare(other) < 0; }
    };
    using Elements = std::multiset<T, Less>;

public:
    using const_iterator = typename Elements::const_iterator;

    std::size_t size() const { return m_elements.size(); }
    int empty() const { return m_elements.empty() ? 1 : 0; }

    /// Inserts a copy of @p element.
    void add(T const& element) { m_elements.insert(place_of(element), element); }

    /// Removes the last of the greatest elements.
    /// @return it, or T() when there is none
    /// @report "object in incorrect state for operation |CO_SORTEDLIST::remove_last | empty"
    T remove_last()
    {
        if (m_elements.empty()) {
            co_report_sorted_list_empty();
            return T();
        }
        auto const last = std::prev(m_elements.end());
        T removed(*last);
        m_elements.erase(last);
        return removed;
    }

    const_iterator begin() const { return m_elements.begin(); }
    const_iterator end() const { return m_elements.end(); }

private:
    /// The element in front of which the new one goes. Comparing may be dear, and elements that come in order,
    /// or are all alike, need one or two.
    const_iterator place_of(T const& element) const
    {
        if (m_elements.empty() || element.compare(*m_elements.rbegin()) > 0)
            return m_elements.end();
        if (element.compare(*m_elements.begin()) <= 0)
            return m_elements.begin();
        return m_elements.lower_bound(element);
    }

    Elements m_elements;
};
