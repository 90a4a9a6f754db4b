// The doubly linked list.
#pragma once

#include <cstddef>
#include <list>

/// Elements in a row, each at an address that stays for as long as it is in the list.
///
/// A list of pointers never owns what they point to.
template <class T>
class coDList
{
public:
    using iterator = typename std::list<T>::iterator;
    using const_iterator = typename std::list<T>::const_iterator;

    std::size_t size() const { return m_elements.size(); }
    int empty() const { return m_elements.empty() ? 1 : 0; }

    /// Inserts a copy of @p element last.
    void append(T const& element) { m_elements.push_back(element); }
    void clear() { m_elements.clear(); }

    iterator begin() { return m_elements.begin(); }
    iterator end() { return m_elements.end(); }
    const_iterator begin() const { return m_elements.begin(); }
    const_iterator end() const { return m_elements.end(); }

private:
    std::list<T> m_elements;
};
