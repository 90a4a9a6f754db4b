// Palettes that are lines of text: GPL and rgb.txt.
//
// In both a line has red, green and blue, 0 to 255 each, with blanks or tabs between them, and then a name. Lines
// end at LF, CR or both.
#pragma once

#include "foreignPalette.h"

#include <string_view>

namespace mrtool {

/// Whether the first line is "GIMP Palette", with or without a byte order mark before it.
bool is_gpl(std::string_view text);

/// Header lines ("Name:", "Columns:") may follow the first; "Channels: RGBA" there means a fourth number, the
/// transparency. "#" begins a comment, names are optional, and "Untitled" is what the format calls a colour
/// without one.
/// @return false at the first line that is none of these
bool read_gpl(std::string_view text, ForeignPalette& palette, ForeignFault& fault);

/// Whether the first line that is neither empty nor a comment has three numbers and a name.
bool is_rgb_txt(std::string_view text);

/// "!" begins a comment, and so does "#". Every colour has a name.
/// @return false at the first line that is neither
bool read_rgb_txt(std::string_view text, ForeignPalette& palette, ForeignFault& fault);

} // namespace mrtool
