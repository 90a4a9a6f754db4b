// What is wrong with a line of a palette file. Used inside the library.
#pragma once

#include "mrTypes.h"
#include "utString.h"

#include <string>

/// Finds words for a line at which mrUtils::read_pcp stopped.
/// @param line   without its line feed
/// @param error  what read_pcp said
utString mr_explain_palette_line(std::string const& line, mrPaletteFileError error);
