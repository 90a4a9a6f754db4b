// Allocations that fail when a test wants them to. For a program of its own: it has its own operator new and malloc.
#pragma once

/// Makes allocations fail while it lives: those of C++, and those of libpng, expat and PCRE2, for which malloc stands
/// in except under the address sanitizer. What GLib, drivers and the C library allocate never fails.
class FailingMemory
{
public:
    enum class Extent
    {
        one,
        all_from_there
    };

    /// @param succeeding  allocations before the first that fails
    FailingMemory(long succeeding, Extent extent);
    ~FailingMemory();
    FailingMemory(FailingMemory const&) = delete;
    FailingMemory& operator=(FailingMemory const&) = delete;

    /// Whether an allocation failed so far.
    bool failed() const;
};

/// Allocations that are alive; under the address sanitizer those of C++ alone.
long count_live_allocations();
