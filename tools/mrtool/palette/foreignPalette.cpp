#include "foreignPalette.h"

#include "ase.h"
#include "fileKind.h"
#include "inputFile.h"
#include "readFile.h"
#include "textPalette.h"

#include "gxOpenFile.h"
#include "utConcat.h"

namespace mrtool {

namespace {

Result<std::string> read_bytes(std::string const& path)
{
    Result<InputFile> const input = find_input(path);
    if (!input)
        return fail(describe_read_fault(mrFileMatOpenFailed, input.error().words));
    utString reason;
    gxFile const file = gx_open_file(utString(input->path), reason);
    if (!file)
        return fail(describe_read_fault(mrFileMatOpenFailed, reason.view()));
    // In pieces, since the size of a file may change while it is read.
    std::string bytes;
    char piece[std::size_t{1} << 16];
    std::size_t count = 0;
    while (bytes.size() <= max_foreign_bytes && (count = std::fread(piece, 1, sizeof piece, file.get())) > 0)
        bytes.append(piece, count);
    if (std::ferror(file.get()))
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

} // namespace mrtool
