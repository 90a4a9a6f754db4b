// mrtool palette: pictures of palettes, and palettes of other formats in this library's.
#include "commands.h"
#include "gxFileHints.h"
#include "messages.h"
#include "mrSource.h"
#include "overwriteGuard.h"
#include "paletteFile.h"
#include "palettePicture.h"
#include "paletteWriter.h"
#include "pendingFile.h"
#include "tally.h"
#include "utConcat.h"

#include <filesystem>
#include <new>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// @throws WrongUsage when the output is a folder, or an input
void check_output(PaletteOptions const& options, std::vector<std::string> const& inputs)
{
    std::string const& output = options.output;
    fs::path const name = fs::path(output).filename();
    std::error_code ignored;
    if (name.empty() || name == "." || name == ".." || fs::is_directory(output, ignored))
        throw WrongUsage{ut_concat(output, " is a folder, not the name of a file")};
    for (std::string const& input : inputs)
        if (fs::equivalent(input, output, ignored))
            throw WrongUsage{ut_concat(output, " would replace the input ", input)};
}

// ---- A picture

void check_picture_usage(PaletteOptions const& options)
{
    if (options.files.empty())
        throw WrongUsage{"FILE is required, or --from"};
    if (options.force)
        throw WrongUsage{"--force goes with --from; a picture replaces pictures, and nothing else"};
    check_output(options, options.files);
    if (gx_extension(options.output) == "pcp")
        throw WrongUsage{ut_concat(options.output,
                                   " is a palette file by its name, and what would be written is a "
                                   "PNG picture; --from makes palette files")};
    if (std::string const objection = objection_to_picture(options.output); !objection.empty())
        throw WrongUsage{ut_concat("the picture would replace ", options.output, ", ", objection)};
}

/// @return whether the file was read
bool read_colours(std::string const& path, std::vector<giColour>& colours)
{
    PaletteFile file;
    read_palette_file(mrSource::from_path(utString(path)), file);
    if (file.status != mrPaletteFileOK) {
        say_remark(path, file);
        return false;
    }
    if (!file.remark.empty())
        say(ut_concat(path, ":", file.line), "warning: " + file.remark);
    utString name;
    colours.reserve(static_cast<std::size_t>(file.palette.size()));
    for (int at = 0; at < file.palette.size(); ++at)
        colours.push_back(file.palette.colour(at, name));
    return true;
}

/// @param swatches  receives the colours of the files that have any
/// @return whether all files were
bool read_files(std::vector<std::string> const& paths, Swatches& swatches)
{
    Progress progress(paths.size());
    bool all_read = true;
    for (std::string const& path : paths) {
        progress.begin(path);
        try {
            std::vector<giColour> colours;
            all_read = read_colours(path, colours) && all_read;
            if (!colours.empty())
                swatches.push_back(std::move(colours));
        } catch (std::bad_alloc const&) {
            say(path, "not enough memory");
            all_read = false;
        }
    }
    return all_read;
}

bool draw(Swatches const& swatches, std::string const& path)
{
    std::vector<std::size_t> counts;
    std::size_t total = 0;
    for (std::vector<giColour> const& colours : swatches) {
        counts.push_back(colours.size());
        total += colours.size();
    }
    auto const layout = swatch_layout(counts);
    if (!layout) {
        say(path,
            ut_concat("a picture of at most ", SwatchLayout::max_side, " pixels on a side has no room for ",
                      number_of(total, "colour"), " of ", number_of(counts.size(), "palette")));
        return false;
    }
    std::string reason;
    if (write_png(*draw_swatches(swatches, *layout), path, reason))
        return true;
    say("palette", reason); // which names the file that fails
    return false;
}

/// @return whether there is a picture now
bool make_picture(Swatches const& swatches, std::string const& path)
{
    try {
        return !swatches.empty() && draw(swatches, path);
    } catch (std::bad_alloc const&) {
        say(path, "not enough memory");
        return false;
    }
}

int run_picture(PaletteOptions const& options)
{
    check_picture_usage(options);
    Swatches swatches;
    bool const all_read = read_files(options.files, swatches);
    bool const drawn = make_picture(swatches, options.output);
    return all_read && drawn ? all_well : something_failed;
}

// ---- A palette of another format

void check_conversion_usage(PaletteOptions const& options)
{
    if (!options.files.empty())
        throw WrongUsage{ut_concat("--from takes one file, and ", options.files.front(), " is a second")};
    check_output(options, {*options.from});
    gxImageFileFormat format = gxImageFilePNG;
    if (gxImageFileUtils::file_format_from_extension(utString(gx_extension(options.output)), format))
        throw WrongUsage{ut_concat(options.output,
                                   " is a picture by its name, and what would be written is a palette "
                                   "file; without --from it becomes a picture")};
    std::error_code ignored;
    fs::file_status const status = fs::status(options.output, ignored);
    if (fs::exists(status) && !fs::is_regular_file(status))
        throw WrongUsage{ut_concat("the palette would replace ", options.output, ", which is no file")};
}

void say_all(std::string const& subject, std::string_view before, std::vector<std::string> const& list)
{
    std::string joined;
    for (std::string const& each : list)
        joined += (joined.empty() ? "" : ", ") + each;
    if (!list.empty())
        say(subject, ut_concat(before, joined));
}

bool convert(std::string const& from, std::string const& path)
{
    ForeignPalette palette;
    ForeignFault fault;
    if (!read_foreign_palette(from, palette, fault)) {
        say(fault.line > 0 ? ut_concat(from, ":", fault.line) : from, fault.words);
        return false;
    }
    std::vector<std::string> of_names;
    std::string reason;
    if (!write_palette(std::move(palette.colours), path, of_names, reason)) {
        say(from, reason);
        return false;
    }
    say_all(from, "not carried over, a palette file has no place for it: ", palette.left_out);
    for (std::vector<std::string> const& list : {palette.notes, of_names})
        for (std::string const& note : list)
            say(from, note);
    return true;
}

int run_conversion(PaletteOptions const& options)
{
    check_conversion_usage(options);
    std::error_code ignored;
    if (!options.force && fs::exists(fs::symlink_status(options.output, ignored))) {
        say(*options.from, options.output + " is there already; --force replaces it");
        return something_failed;
    }
    try {
        return convert(*options.from, options.output) ? all_well : something_failed;
    } catch (std::bad_alloc const&) {
        say(*options.from, "not enough memory");
        return something_failed;
    }
}

} // namespace

int run_palette(PaletteOptions const& options)
{
    return options.from ? run_conversion(options) : run_picture(options);
}

} // namespace mrtool
