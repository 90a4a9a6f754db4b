// Reading a palette file, with words and a line for what is wrong with it.
#pragma once

#include "mrColourPalette.h"
#include "mrTypes.h"

#include <string>
#include <string_view>

namespace mrtool {

/// A palette file, read or not.
struct PaletteFile
{
    /// What the library's reader says; mrPaletteFileBadFormat also where the file holds no colour, which the
    /// library's palette cache refuses too.
    mrPaletteFileError status = mrPaletteFileOpenFailed;
    /// What is wrong with the file. Of one that reads (mrPaletteFileOK): which of its lines are not read, and
    /// empty when all are.
    std::string remark;
    /// The line that the remark is about, from 1; 0 when it is about none.
    long line = 0;
    /// The colours, of a file with a bad line those before it.
    mrColourPalette palette;
};

/// The word that begins the lines of an encoding: "rgb8", "cmy8" or "cmyk". Not for
/// mrColourEncodingNone, which no file gives.
char const* keyword(mrColourEncoding encoding);

/// Whether a file with this beginning is a palette file: its first line that is neither empty nor a comment
/// begins with a keyword.
bool is_palette(std::string_view beginning);

/// @param file  a new one, to be filled
void read_palette_file(std::string const& path, PaletteFile& file);

/// Says the remark on standard error, "mrtool: FILE:LINE: REMARK"; nothing when there is none.
void say_remark(std::string const& path, PaletteFile const& file);

} // namespace mrtool
