// Keeps the lack of memory inside the library. Used inside the library.
#pragma once

#include "mrFault.h"

#include <new>
#include <ostream>
#include <stdexcept>

/// Does the work and returns its result. Without enough memory, or room in a container, it returns @p failure, and the
/// fault says so. What a handler of reports throws passes through.
/// @param fault  may be null
template <class Result, class Work>
Result mr_guard(mrFault* fault, Result failure, Work const& work)
{
    try {
        return work();
    } catch (std::bad_alloc const&) {
    } catch (std::length_error const&) {
    }
    if (fault)
        fault->set_out_of_memory();
    return failure;
}

template <class Result, class Work>
Result mr_guard(mrFault& fault, Result failure, Work const& work)
{
    return mr_guard(&fault, failure, work);
}

/// The same without a fault.
template <class Result, class Work>
Result mr_guard(Result failure, Work const& work)
{
    return mr_guard(static_cast<mrFault*>(nullptr), failure, work);
}

/// Does the work, which writes to the stream. Without enough memory the stream becomes bad.
template <class Work>
void mr_guard_stream(std::ostream& out, Work const& work)
{
    try {
        work();
    } catch (std::bad_alloc const&) {
        out.setstate(std::ios::badbit);
    }
}

/// Turns the null of a function that tells of the lack of memory by it into an exception again, for a caller under
/// mr_guard.
template <class T>
T& mr_need(T* made)
{
    if (!made)
        throw std::bad_alloc();
    return *made;
}
