// Explains errors in a line of a palette file. Used inside the library.
#pragma once

#include "mrTypes.h"
#include "utString.h"

#include <string>

/// Explains why mrUtils::read_pcp stopped at a line.
/// @param line   without its line feed
/// @param error  of read_pcp
utString mr_explain_palette_line(std::string const& line, mrPaletteFileError error);
