// The paged array.
#pragma once

#include "utExport.h"

#include <cstddef>
#include <deque>

/// @report "argument out of range | CO_PAGEARR::index"
UT_API void co_report_array_index();

/// Elements in a row, found by position, each at an address that stays until the array is cleared.
template <class T>
class coPageArr
{
public:
    std::size_t size() const { return m_elements.size(); }
    int empty() const { return m_elements.empty() ? 1 : 0; }

    /// Inserts a copy of @p element last.
    void append(T const& element) { m_elements.push_back(element); }
    void clear() { m_elements.clear(); }

    /// The element at a position from 0 on, or a default one past either end.
    /// @report "argument out of range | CO_PAGEARR::index" past either end
    T const& operator[](int index) const
    {
        static T const missing{};
        if (index >= 0 && static_cast<std::size_t>(index) < m_elements.size())
            return m_elements[static_cast<std::size_t>(index)];
        co_report_array_index();
        return missing;
    }

private:
    std::deque<T> m_elements;
};
