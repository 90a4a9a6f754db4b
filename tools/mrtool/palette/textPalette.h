// Palettes that are lines of text: GPL and rgb.txt.
//
// In both, a line has red, green and blue, 0 to 255 each, with blanks or tabs between them, and then a name. Lines
// end at LF, CR or CR LF. A fault is the first line that is neither a colour, a comment, empty nor a header.
#pragma once

#include "foreignPalette.h"

namespace mrtool {

/// Whether the first line is "GIMP Palette", with or without a byte order mark before it.
bool is_gpl(std::string_view text);

/// Header lines ("Name:", "Columns:") may follow the first; "Channels: RGBA" there means a fourth number, the
/// opacity. "#" begins a comment, names are optional, and the format names a colour without one "Untitled".
Result<ForeignPalette> parse_gpl(std::string_view text);

/// Whether the first line that is neither empty nor a comment has three numbers and a name.
bool is_rgb_txt(std::string_view text);

/// "!" and "#" begin a comment. Every colour has a name.
Result<ForeignPalette> parse_rgb_txt(std::string_view text);

} // namespace mrtool
