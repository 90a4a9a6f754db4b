// The reason why a file could not be read or written, and the place in it.
#pragma once

#include "coDList.h"
#include "mrExport.h"
#include "utString.h"

#include <cstdint>

/// The first thing that was wrong with a file.
///
/// Only what is known is set. The words are English, for a user to read; programs decide by the reader's status.
struct MR_API mrFault
{
    /// Invalid while nothing is wrong. A sentence of its own where part and column are unset.
    utString reason = {};
    /// The part of the file: "facet 2: plain material", "image 3", "line 7"; invalid where the reason names it.
    utString part = {};
    std::int64_t line = 0;   ///< in the file, from 1; 0 when unknown
    std::int64_t column = 0; ///< in bytes, from 1; 0 when unknown
    std::int64_t byte = -1;  ///< from the beginning of the file, from 0; -1 when unknown

    /// Place and reason together: "line 14, column 9: mismatched tag", "image 2, at byte 48213: the file ends
    /// before the image does". Invalid without a fault. May throw std::bad_alloc, as within() and copying may.
    utString words() const;

    /// Puts a larger part in front: "plain material" within "facet 2" is "facet 2: plain material".
    void within(utString const& larger);

    /// Becomes "not enough memory", or, where even these words do not fit, "no memory".
    void set_out_of_memory() noexcept;
};

using mrFaultcoDList = coDList<mrFault>;
