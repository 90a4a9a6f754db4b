// Palettes of other programs: this library's palette file can hold every one that reads.
#include "fuzz.h"

#include "foreignPalette.h"

#include "mrColourPalette.h"
#include "mrFault.h"
#include "mrSource.h"
#include "mrUtils.h"

#include <filesystem>
#include <unistd.h>

void try_input(std::string const& bytes)
{
    MemoryFile const input(bytes);
    mrtool::Result<mrtool::ForeignPalette> const foreign = mrtool::read_foreign_palette(input.path());
    if (!foreign) {
        require(!foreign.error().words.empty(), "there are words for what is wrong with a palette");
        return;
    }
    static std::string const path =
        (std::filesystem::temp_directory_path() / ("mr-fuzz-" + std::to_string(getpid()) + ".pcp")).string();
    auto const written = mrtool::write_palette(foreign->colours, path);
    require(written.has_value(), "a palette that was read can be written, whatever its names");
    mrColourPalette palette;
    mrFault fault;
    require(mrUtils::read_pcp(mrSource::from_path(utString(path)), palette, fault) == mrPaletteFileOK,
            "a palette that was written reads");
    require(palette.size() == static_cast<int>(foreign->colours.size()), "no colour is lost");
    std::filesystem::remove(path);
}
