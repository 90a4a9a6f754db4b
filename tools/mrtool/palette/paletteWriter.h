// Palettes of other formats, written in this library's.
#pragma once

#include "foreignPalette.h"

#include <string>
#include <vector>

namespace mrtool {

/// Writes a palette file and believes in it when it reads back the same. Names that it cannot hold are changed.
/// @param colours  handed over, as there may be very many
/// @param notes    receives in words which names were
/// @param reason   receives in words what went wrong
bool write_palette(std::vector<ForeignColour> colours, std::string const& path,
                   std::vector<std::string>& notes, std::string& reason);

} // namespace mrtool
