// Reading files of the library's formats, with faults in words for the user.
#pragma once

#include "fault.h"

#include "mrTypes.h"

#include <string_view>

class mrColourPalette;
class mrSource;

namespace mrtool {

/// The fault of a file for the user: "cannot be opened: No such file or directory", "not a material file: ...",
/// "bad content: ...".
std::string describe_read_fault(mrFileMatReadStatus status, std::string_view words);

/// Reads a palette file. One without colours is a fault, as it is to the library's palette cache.
/// @param palette  an empty one
/// @param warning  receives which lines of a file that reads are not read; without words when all are
Result<> read_palette(mrSource const& source, mrColourPalette& palette, Fault& warning);

} // namespace mrtool
