// Keeps the lack of memory inside the library. Used inside the library.
#pragma once

#include "mrFault.h"

#include <new>

/// Does the work and returns its result. Without enough memory it returns @p failure, and the fault says so.
template <class Result, class Work>
Result mr_guard(mrFault& fault, Result failure, Work const& work)
{
    try {
        return work();
    } catch (std::bad_alloc const&) {
        fault.set_out_of_memory();
        return failure;
    }
}
