// Palette files: colours and names are the same when they are written and read once more.
#include "fuzz.h"

#include "mrColourPalette.h"
#include "mrUtils.h"
#include "utString.h"

#include <sstream>

namespace {

mrPaletteFileError read(std::string const& text, mrColourPalette& palette)
{
    std::istringstream in(text);
    return mrUtils::read_pcp(in, palette);
}

} // namespace

void try_input(std::string const& bytes)
{
    mrColourPalette palette;
    // Where a line is in error, the colours before it are there.
    read(bytes, palette);
    std::ostringstream written;
    mrUtils::write_pcp(palette, written);
    std::istringstream lines(written.str());
    for (std::string line; std::getline(lines, line);)
        if (line.size() > 1023)
            return; // "rgb8 255 255 255" took more room than what stood in front of a name
    mrColourPalette again;
    require(read(written.str(), again) == mrPaletteFileOK, "a palette that was written reads");
    require(again.size() == palette.size(), "no colour is lost");
    for (int i = 0; i < palette.size(); ++i) {
        utString name;
        utString same_name;
        require(again.colour(i, same_name) == palette.colour(i, name), "a colour stays");
        require(same_name.invalid() == name.invalid() && same_name.view() == name.view(), "a name stays");
    }
}
