// Objects in static storage that outlive every user.
#pragma once

#include <new>
#include <utility>

/// For a function's static object whose reference is handed out: it is made on first use and never destroyed, so a
/// static object of an application may ask for it in its destructor, whenever either was made.
///
/// It is gone when its library is unloaded. What it holds on the heap stays then, so it should hold little.
template <class T>
class utNeverDestroyed
{
public:
    template <class... Arguments>
    explicit utNeverDestroyed(Arguments&&... arguments)
    {
        ::new (m_storage) T(std::forward<Arguments>(arguments)...);
    }
    utNeverDestroyed(utNeverDestroyed const&) = delete;
    utNeverDestroyed& operator=(utNeverDestroyed const&) = delete;

    T& operator*() { return *std::launder(reinterpret_cast<T*>(m_storage)); }
    T const& operator*() const { return *std::launder(reinterpret_cast<T const*>(m_storage)); }

private:
    alignas(T) unsigned char m_storage[sizeof(T)];
};
