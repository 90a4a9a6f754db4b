#include "paletteWriter.h"

#include "paletteNames.h"
#include "pendingFile.h"
#include "utConcat.h"

#include "mrColourPalette.h"
#include "mrUtils.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <sstream>

namespace mrtool {

namespace {

constexpr std::size_t longest_line = 1023;

/// Bytes that the colour's line has room for behind the numbers.
std::size_t room_for_name(giColour const& colour)
{
    return longest_line -
           ut_concat("rgb8 ", colour.red(), " ", colour.green(), " ", colour.blue(), " ").size();
}

void fill(mrColourPalette& palette, std::vector<ForeignColour> const& colours,
          std::vector<std::string>& notes)
{
    PaletteNames names;
    for (ForeignColour const& each : colours) {
        std::string name = names.take(each.name, room_for_name(each.colour));
        palette.append(each.colour, name.empty() ? utString() : utString(std::move(name)),
                       mrColourEncodingRgb8);
    }
    notes = names.notes();
}

bool same_colours(mrColourPalette const& first, mrColourPalette const& second)
{
    if (first.size() != second.size())
        return false;
    utString name, other_name;
    for (int at = 0; at < first.size(); ++at)
        if (first.colour(at, name) != second.colour(at, other_name) || name != other_name)
            return false;
    return true;
}

/// @return the error, or 0
int write_file(mrColourPalette const& palette, std::string const& path)
{
    // The library flushes after every line, which on a file takes a write each.
    std::ostringstream lines;
    mrUtils::write_pcp(palette, lines);
    errno = 0;
    std::ofstream out(path, std::ios::binary);
    out.write(lines.view().data(), static_cast<std::streamsize>(lines.view().size()));
    out.close();
    return out ? 0 : errno != 0 ? errno : EIO;
}

} // namespace

bool write_palette(std::vector<ForeignColour> colours, std::string const& path,
                   std::vector<std::string>& notes, std::string& reason)
{
    mrColourPalette palette;
    fill(palette, colours, notes);
    colours = {};
    return write_whole(path, reason, [&](std::string const& temporary) {
        if (int const error = write_file(palette, temporary); error != 0) {
            reason = ut_concat(path, " cannot be written: ", std::strerror(error));
            return false;
        }
        mrColourPalette read_back;
        std::ifstream in(temporary, std::ios::binary);
        if (mrUtils::read_pcp(in, read_back) != mrPaletteFileOK || !same_colours(palette, read_back))
            reason = path + " does not read back as it was written";
        return reason.empty();
    });
}

} // namespace mrtool
