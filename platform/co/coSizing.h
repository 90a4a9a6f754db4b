// The two numbers that hashed containers are created with.
#pragma once

#include "utExport.h"

#include <cstddef>

/// Room for entries and the fill at which it grows; how fast a container is depends on it, nothing else.
struct UT_API coSizing
{
    /// @param initial_size  number of entries to make room for; 0 or less makes none
    /// @param fill_limit    per cent of the buckets in use before there are more of them, 1 to 99; a value
    ///                      beyond is taken as the nearest of these
    coSizing(int initial_size, int fill_limit);

    std::size_t entries;
    float load_factor;
};
