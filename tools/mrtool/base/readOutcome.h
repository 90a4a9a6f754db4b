// What became of reading a file that the library reads, in words.
#pragma once

#include "mrTypes.h"

#include <string>
#include <vector>

namespace mrtool {

struct ReadOutcome
{
    /// What the library's reader says, or would say. With mrFileMatOpenFailed, the file could not be opened.
    mrFileMatReadStatus status = mrFileMatOpenFailed;
    /// Of a file that does not read, what is wrong.
    std::string fault;
    /// The line that the fault is in, from 1, where that is known and the fault does not say it; else 0.
    long line = 0;
    /// Of one that reads, what is not as it should be.
    std::vector<std::string> warnings;

    bool read() const { return status == mrFileMatReadOK; }
};

} // namespace mrtool
