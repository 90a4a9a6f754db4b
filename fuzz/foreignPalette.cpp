// Palettes of other programs: whatever is in one that reads, this library's palette file can hold.
#include "fuzz.h"

#include "foreignPalette.h"
#include "paletteNames.h"

#include "mrColourPalette.h"
#include "mrUtils.h"

#include <sstream>

void try_input(std::string const& bytes)
{
    MemoryFile const input(bytes);
    mrtool::Result<mrtool::ForeignPalette> const foreign = mrtool::read_foreign_palette(input.path());
    if (!foreign) {
        require(!foreign.error().words.empty(), "a palette that does not read is said to be wrong");
        return;
    }
    mrtool::PaletteNames names;
    std::string text;
    for (mrtool::ForeignColour const& colour : foreign->colours)
        text += "rgb8 0 0 0 " + names.claim(colour.name, 1000) + "\n";
    std::istringstream in(text);
    mrColourPalette palette;
    require(mrUtils::read_pcp(in, palette) == mrPaletteFileOK, "any names can be made to fit");
    require(palette.size() == static_cast<int>(foreign->colours.size()), "no colour is lost");
}
