// Palettes in the ASE format, Adobe Swatch Exchange.
#pragma once

#include "foreignPalette.h"

namespace mrtool {

/// Whether the bytes begin with "ASEF".
bool is_swatch_exchange(std::string_view bytes);

/// Parses version 1.0. All numbers are big-endian. "ASEF" is followed by the version in two 16-bit numbers and the
/// number of blocks in 32 bits. A block has a 16-bit type, a 32-bit length, which does not count these six bytes,
/// and its content:
///
/// - type c001 begins a group: its name; type c002 ends one
/// - type 0001 is a colour: its name; its model, "RGB ", "CMYK", "LAB " or "Gray"; 3, 4, 3 or 1 components as
///   floats; a 16-bit kind, 0 global, 1 spot, 2 neither
///
/// A name is a 16-bit count of UTF-16 units and the units, of which the last is NUL. Components go from 0 to 1, a
/// and b of LAB from -128 to 127; black is 0 in Gray, and no ink is 0 in CMYK.
///
/// CMYK is converted by mrUtils::colour_from_components, with percentages rounded to thousandths. LAB is
/// converted under D50 to sRGB, by the formulas of CIE 15 and ISO 11664-4 for LAB, the matrix of B. Lindbloom's
/// "RGB/XYZ Matrices" for sRGB adapted to D50 by Bradford, and the curve of IEC 61966-2-1.
/// @return a fault, with its byte, when a block is broken or missing, or a component is no finite number
Result<ForeignPalette> parse_swatch_exchange(std::string_view bytes);

} // namespace mrtool
