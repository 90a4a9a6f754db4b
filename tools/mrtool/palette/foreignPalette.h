// Palettes in the formats of other programs: reading them, and writing them in this library's.
#pragma once

#include "fault.h"

#include "giColour.h"

#include <vector>

namespace mrtool {

struct ForeignColour
{
    std::string name; ///< as the file has it, in any encoding; may be empty
    giColour colour;
};

/// A palette of another format, as far as a palette of this library can hold it.
struct ForeignPalette
{
    std::vector<ForeignColour> colours;
    std::vector<std::string> left_out; ///< what else the file holds, in words
    std::vector<std::string> notes;    ///< how colours were changed, in words
};

/// Larger files are refused; a million colours with names take less.
inline constexpr std::size_t max_foreign_bytes = std::size_t{32} << 20;

/// The name of a colour in notes: quoted, or "colour 7" without a name.
/// @param index  its index in the palette that is made
std::string describe_colour(std::string const& name, std::size_t index);

/// Reads a GPL, ASE or rgb.txt palette; its content decides which. Safe for untrusted input: memory is taken only
/// for the file's bytes and for colours that it holds.
Result<ForeignPalette> read_foreign_palette(std::string const& path);

/// Writes a palette file and checks that it reads back the same. Names that it cannot hold are changed.
/// @param colours  passed by value, so that their memory, which may be a lot, is freed as soon as possible
/// @return which names were changed, in words
Result<std::vector<std::string>> write_palette(std::vector<ForeignColour> colours, std::string const& path);

} // namespace mrtool
