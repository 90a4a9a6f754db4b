#include "foreignPalette.h"

#include "ase.h"
#include "fileKind.h"
#include "inputFile.h"
#include "outputFile.h"
#include "paletteNames.h"
#include "textPalette.h"
#include "utConcat.h"

#include "mrColourPalette.h"
#include "mrUtils.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace mrtool {

namespace {

// ---- Reading

Result<std::string> read_bytes(std::string const& path)
{
    std::string reason;
    std::ifstream in = open_input(path, reason);
    if (!in)
        return fail(cannot_be_opened(reason));
    // In pieces, since the size of a file may change while it is read.
    std::string bytes;
    std::string piece(std::size_t{1} << 16, '\0');
    while (in && bytes.size() <= max_foreign_bytes) {
        in.read(piece.data(), static_cast<std::streamsize>(piece.size()));
        bytes.append(piece, 0, static_cast<std::size_t>(in.gcount()));
    }
    if (in.bad())
        return fail("reading it failed before its end");
    if (bytes.size() > max_foreign_bytes)
        return fail(ut_concat("larger than ", max_foreign_bytes >> 20, " MiB, which no palette is"));
    return bytes;
}

Result<ForeignPalette> parse(std::string const& bytes)
{
    if (is_swatch_exchange(bytes))
        return parse_swatch_exchange(bytes);
    if (is_gpl(bytes))
        return parse_gpl(bytes);
    if (is_rgb_txt(bytes))
        return parse_rgb_txt(bytes);
    return fail(is_palette(bytes) ? "this is a palette file already, and needs no --from"
                                  : "neither a GPL, an ASE nor an rgb.txt palette");
}

// ---- Writing

constexpr std::size_t longest_line = 1023;

/// The bytes that the colour's line leaves for the name.
std::size_t count_room(giColour const& colour)
{
    return longest_line -
           ut_concat("rgb8 ", colour.red(), " ", colour.green(), " ", colour.blue(), " ").size();
}

/// @return which names were changed
std::vector<std::string> fill(mrColourPalette& palette, std::vector<ForeignColour> const& colours)
{
    PaletteNames names;
    for (ForeignColour const& each : colours) {
        std::string name = names.claim(each.name, count_room(each.colour));
        palette.append(each.colour, name.empty() ? utString() : utString(std::move(name)),
                       mrColourEncodingRgb8);
    }
    return names.list_changes();
}

std::string print(mrColourPalette const& palette)
{
    std::ostringstream lines;
    mrUtils::write_pcp(palette, lines);
    return std::move(lines).str();
}

/// @return 0, or the error number
int write_file(std::string const& text, std::string const& path)
{
    errno = 0;
    std::ofstream out(path, std::ios::binary);
    out.write(text.data(), static_cast<std::streamsize>(text.size()));
    out.close();
    return out ? 0 : errno != 0 ? errno : EIO;
}

} // namespace

std::string describe_colour(std::string const& name, std::size_t index)
{
    return name.empty() ? ut_concat("colour ", index) : ut_quote_short(name);
}

Result<ForeignPalette> read_foreign_palette(std::string const& path)
{
    Result<ForeignPalette> palette = read_bytes(path).and_then(parse);
    if (palette && palette->colours.empty())
        return fail("it holds no colour");
    return palette;
}

Result<std::vector<std::string>> write_palette(std::vector<ForeignColour> colours, std::string const& path)
{
    mrColourPalette palette;
    std::vector<std::string> changes = fill(palette, colours);
    colours = {};
    // At once, since the library flushes after every line, which costs a system call each on a file.
    std::string const text = print(palette);
    Result<> const written = write_whole(path, [&](std::string const& temporary) -> Result<> {
        if (int const error = write_file(text, temporary); error != 0)
            return fail(ut_concat(path, " cannot be written: ", std::strerror(error)));
        mrColourPalette read_back;
        std::ifstream in(temporary, std::ios::binary);
        if (mrUtils::read_pcp(in, read_back) != mrPaletteFileOK || print(read_back) != text)
            return fail(path + " does not read back as it was written");
        return {};
    });
    return written.map([&] { return std::move(changes); });
}

} // namespace mrtool
