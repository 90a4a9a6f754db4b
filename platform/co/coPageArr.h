// The paged array.
#pragma once

#include "utExport.h"
#include "utNeverDestroyed.h"

#include <cstddef>
#include <memory>
#include <vector>

/// @report "argument out of range | CO_PAGEARR::index"
UT_API void co_report_array_index();

/// Elements in a row, found by position, each at an address that stays until the array is cleared.
template <class T>
class coPageArr
{
public:
    coPageArr() = default;
    coPageArr(coPageArr const&) = delete;
    coPageArr& operator=(coPageArr const&) = delete;

    std::size_t size() const { return m_size; }
    int empty() const { return m_size == 0 ? 1 : 0; }

    /// Inserts a copy of @p element last.
    void append(T const& element)
    {
        if (m_size == m_pages.size() * page_size)
            m_pages.push_back(std::make_unique<T[]>(page_size));
        m_pages.back()[m_size % page_size] = element;
        ++m_size;
    }

    /// Removes the last element, which there must be.
    void remove_last()
    {
        --m_size;
        m_pages.back()[m_size % page_size] = T();
        if (m_size % page_size == 0)
            m_pages.pop_back();
    }

    void clear()
    {
        m_pages.clear();
        m_size = 0;
    }

    /// The element at a position from 0 on, or a default one past either end.
    /// @report "argument out of range | CO_PAGEARR::index" past either end
    T const& operator[](int index) const
    {
        static utNeverDestroyed<T> const missing;
        auto const at = static_cast<std::size_t>(index);
        if (index >= 0 && at < m_size)
            return m_pages[at / page_size][at % page_size];
        co_report_array_index();
        return *missing;
    }

private:
    // Large enough that the list of pages of very many elements stays in a processor's nearest cache.
    static constexpr std::size_t page_size = 64;

    std::vector<std::unique_ptr<T[]>> m_pages;
    std::size_t m_size = 0; ///< elements in all pages
};
