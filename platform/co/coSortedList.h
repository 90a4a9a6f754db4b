// The sorted list.
#pragma once

#include "utExport.h"

#include <cstddef>
#include <iterator>
#include <set>
#include <utility>

/// @report "object in incorrect state for operation |CO_SORTEDLIST::remove_last | empty"
UT_API void co_report_sorted_list_empty();

/// Elements in ascending order, which `int T::compare(T const&) const` gives: below 0, 0, or above 0.
///
/// Elements that compare equal are all kept, the one added last before the others. What an element compares
/// by may change while nothing is added; the order stays that of when the elements were added. The element
/// removed last lives on until the next is added. Not to be copied.
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
    void add(T const& element)
    {
        if (m_spare.empty()) {
            m_elements.insert(place_of(element), element);
            return;
        }
        m_spare.value() = element;
        m_elements.insert(place_of(element), std::move(m_spare));
    }

    /// Removes the last of the greatest elements.
    /// @return the element, or T() when the list is empty
    /// @report "object in incorrect state for operation |CO_SORTEDLIST::remove_last | empty"
    T remove_last()
    {
        if (m_elements.empty()) {
            co_report_sorted_list_empty();
            return T();
        }
        m_spare = m_elements.extract(std::prev(m_elements.end()));
        return m_spare.value();
    }

    const_iterator begin() const { return m_elements.begin(); }
    const_iterator end() const { return m_elements.end(); }

private:
    /// The element in front of which the new one goes. Comparing may be dear, and elements that come in
    /// order, or are all alike, need one or two.
    const_iterator place_of(T const& element) const
    {
        if (m_elements.empty() || element.compare(*m_elements.rbegin()) > 0)
            return m_elements.end();
        if (element.compare(*m_elements.begin()) <= 0)
            return m_elements.begin();
        return m_elements.lower_bound(element);
    }

    Elements m_elements;
    /// The node of the element removed last: most often another one is added next.
    typename Elements::node_type m_spare;
};
