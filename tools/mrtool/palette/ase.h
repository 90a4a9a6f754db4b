// Palettes in the ASE format, Adobe Swatch Exchange.
#pragma once

#include "foreignPalette.h"

#include <string_view>

namespace mrtool {

/// Whether the bytes begin with "ASEF".
bool is_swatch_exchange(std::string_view bytes);

/// Reads version 1.0. All numbers are big endian: after "ASEF" the version in two of 16 bits and the number of
/// blocks in 32; each block a type of 16 bits and a length of 32, which does not count these six bytes. The types:
///
/// - c001 begins a group (its name), c002 ends one
/// - 0001 is a colour: its name; its model, "RGB ", "CMYK", "LAB " or "Gray"; 3, 4, 3 or 1 components as floats;
///   16 bits that tell what kind it is: 0 global, 1 spot, 2 neither
///
/// A name is a number of 16 bits and so many UTF-16 units, of which the last is NUL. Components go from 0 to 1, a
/// and b of LAB from -128 to 127; black is 0 in Gray and no ink is 0 in CMYK.
///
/// CMYK is converted by mrUtils::colour_from_components, with percentages rounded to thousandths. LAB is
/// converted under D50 to sRGB, by the formulas of CIE 15 and ISO 11664-4 for LAB, the matrix of B. Lindbloom's
/// "RGB/XYZ Matrices" for sRGB adapted to D50 by Bradford, and the curve of IEC 61966-2-1.
/// @param fault  receives at which byte the fault is, and what is wrong
/// @return false when a block is broken or missing, or a component is no finite number
bool read_swatch_exchange(std::string_view bytes, ForeignPalette& palette, ForeignFault& fault);

} // namespace mrtool
