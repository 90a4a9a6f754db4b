// The doubly linked list.
#pragma once

#include "utExport.h"
#include "utNeverDestroyed.h"

#include <cstddef>
#include <iterator>
#include <list>

/// @report "argument out of range | CO_DLIST::index"
UT_API void co_report_list_index();

/// Elements in a row, each at an address that stays for as long as it is in the list.
///
/// A list of pointers never owns what they point to. Beside any number of iterators a list has one cursor of
/// its own, which only restart() and next() move; a copy's cursor is past the end.
template <class T>
class coDList
{
public:
    using iterator = typename std::list<T>::iterator;
    using const_iterator = typename std::list<T>::const_iterator;

    coDList() = default;
    coDList(coDList const& other) : m_elements(other.m_elements) {}
    coDList& operator=(coDList const& other)
    {
        m_elements = other.m_elements;
        m_cursor = m_elements.end();
        return *this;
    }

    std::size_t size() const { return m_elements.size(); }
    int empty() const { return m_elements.empty() ? 1 : 0; }

    /// Inserts a copy of @p element last.
    void append(T const& element) { m_elements.push_back(element); }

    /// Removes every element; the cursor is past the end.
    void clear()
    {
        m_elements.clear();
        m_cursor = m_elements.end();
    }

    /// The element at a position from 0 on, or a default one past either end. Time is linear in the position.
    /// @report "argument out of range | CO_DLIST::index" past either end
    T const& operator[](int index) const
    {
        static utNeverDestroyed<T> const missing;
        if (index >= 0 && static_cast<std::size_t>(index) < m_elements.size())
            return *std::next(m_elements.begin(), index);
        co_report_list_index();
        return *missing;
    }

    /// Sets the cursor to the first element.
    void restart() { m_cursor = m_elements.begin(); }

    /// The element at the cursor, which then stands at the one after it; null past the end.
    T* next() { return m_cursor == m_elements.end() ? nullptr : &*m_cursor++; }

    iterator begin() { return m_elements.begin(); }
    iterator end() { return m_elements.end(); }
    const_iterator begin() const { return m_elements.begin(); }
    const_iterator end() const { return m_elements.end(); }

private:
    std::list<T> m_elements;
    iterator m_cursor = m_elements.end();
};
