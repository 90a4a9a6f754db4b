// How it is said that a file of the library's formats cannot be read.
#pragma once

#include "mrTypes.h"

#include <string>

struct mrFault;

namespace mrtool {

/// The fault of a material file or an image cache file for the user: "cannot be opened: No such file or directory",
/// "not a material file: ...", "bad content: ...".
std::string describe_read_fault(mrFileMatReadStatus status, mrFault const& fault);

/// The same of words that are there already.
std::string describe_read_fault(mrFileMatReadStatus status, std::string const& words);

} // namespace mrtool
