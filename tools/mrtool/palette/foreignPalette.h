// Palettes in the formats of other programs.
#pragma once

#include "giColour.h"

#include <cstddef>
#include <string>
#include <vector>

namespace mrtool {

struct ForeignColour
{
    std::string name; ///< as the file has it, in any encoding; empty for none
    giColour colour;
};

/// What is in a palette of another format, as far as a palette of this library can hold it.
struct ForeignPalette
{
    std::vector<ForeignColour> colours;
    std::vector<std::string> left_out; ///< what else is there, in words
    std::vector<std::string> notes;    ///< how colours were changed, in words
};

/// Why a file is no palette.
struct ForeignFault
{
    std::string words;
    long line = 0; ///< that the words are about, from 1; 0 when they are about none
};

/// A larger file is refused: a million colours with names take less.
inline constexpr std::size_t max_foreign_bytes = std::size_t{32} << 20;

/// How a colour is called in notes.
/// @param index  its own in the palette that is made
std::string shown_colour(std::string const& name, std::size_t index);

/// Reads a GPL, ASE or rgb.txt palette; which of them it is, its content decides. Safe for untrusted input: it
/// takes memory for the file's bytes, and for colours that are there.
/// @return false when it is none, or something is wrong with it
bool read_foreign_palette(std::string const& path, ForeignPalette& palette, ForeignFault& fault);

} // namespace mrtool
