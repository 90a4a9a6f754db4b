// Reading a palette file for the user.
#pragma once

#include "mrColourPalette.h"
#include "mrSource.h"
#include "mrTypes.h"

#include <cstdint>
#include <string>

namespace mrtool {

/// A palette file, read or not.
struct PaletteFile
{
    /// What the library's reader says; mrPaletteFileBadFormat also where the file holds no colour, which the
    /// library's palette cache refuses too.
    mrPaletteFileError status = mrPaletteFileOpenFailed;
    /// What is wrong with the file. Of one that reads (mrPaletteFileOK): which of its lines are not read; empty when
    /// all are.
    std::string remark;
    std::int64_t line = 0;   ///< that the remark is about, from 1; 0 for none
    mrColourPalette palette; ///< the colours, of a file with a bad line those before it
};

/// @param file  a new one, to be filled
void read_palette_file(mrSource const& source, PaletteFile& file);

/// Says the remark on standard error, "mrtool: FILE:LINE: REMARK"; nothing when there is no remark.
void say_remark(std::string const& path, PaletteFile const& file);

} // namespace mrtool
