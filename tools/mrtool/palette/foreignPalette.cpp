#include "foreignPalette.h"

#include "ase.h"
#include "fileKind.h"
#include "inputFile.h"
#include "tally.h"
#include "textPalette.h"
#include "utConcat.h"

namespace mrtool {

namespace {

/// @return false when the file cannot be read
bool read_bytes(std::string const& path, std::string& bytes, ForeignFault& fault)
{
    std::ifstream in = open_input(path, fault.words);
    if (!in) {
        fault.words = cannot_be_opened(fault.words);
        return false;
    }
    // By what comes, as the size that a file has now may be another one afterwards.
    std::string piece(std::size_t{1} << 16, '\0');
    while (in && bytes.size() <= max_foreign_bytes) {
        in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        bytes.append(piece, 0, static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad())
        fault.words = "reading it failed before its end";
    else if (bytes.size() > max_foreign_bytes)
        fault.words = ut_concat("larger than ", max_foreign_bytes >> 20, " MiB, which no palette is");
    return fault.words.empty();
}

} // namespace

std::string shown_colour(std::string const& name, std::size_t index)
{
    return name.empty() ? ut_concat("colour ", index) : shown(name);
}

bool read_foreign_palette(std::string const& path, ForeignPalette& palette, ForeignFault& fault)
{
    std::string bytes;
    if (!read_bytes(path, bytes, fault))
        return false;
    bool read = false;
    if (is_swatch_exchange(bytes))
        read = read_swatch_exchange(bytes, palette, fault);
    else if (is_gpl(bytes))
        read = read_gpl(bytes, palette, fault);
    else if (is_rgb_txt(bytes))
        read = read_rgb_txt(bytes, palette, fault);
    else
        fault.words = is_palette(bytes) ? "this is a palette file already, and needs no --from"
                                        : "neither a GPL, an ASE nor an rgb.txt palette";
    if (read && palette.colours.empty()) {
        fault.words = "it holds no colour";
        return false;
    }
    return read;
}

} // namespace mrtool
