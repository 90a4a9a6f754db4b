// mrtool palette: pictures of palettes, and palettes of other formats in this library's.
#include "commandLine.h"
#include "foreignPalette.h"
#include "inputFile.h"
#include "outputFile.h"
#include "palettePicture.h"
#include "progress.h"
#include "readFile.h"
#include "tally.h"
#include "utConcat.h"

#include "mrColourPalette.h"
#include "mrSource.h"

#include "gxFileHints.h"
#include "gxImageFileUtils.h"

#include <CLI/CLI.hpp>

#include <filesystem>
#include <memory>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

struct PaletteOptions
{
    std::vector<std::string> files;  ///< to be drawn
    std::optional<std::string> from; ///< a palette of another format, to be converted instead
    std::string output;
    bool force = false; ///< whether to replace an existing palette file
};

/// @throws WrongUsage when the output is a folder, or an input
void check_output(PaletteOptions const& options, std::vector<std::string> const& inputs)
{
    std::string const& output = options.output;
    if (output == standard_output)
        return;
    fs::path const name = fs::path(output).filename();
    std::error_code ignored;
    if (name.empty() || name == "." || name == ".." || fs::is_directory(output, ignored))
        throw WrongUsage{ut_concat(output, " is a folder, not the name of a file")};
    for (std::string const& input : inputs)
        if (fs::equivalent(find_opened_path(input), output, ignored))
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
    if (Result<> const checked = check_picture_path(options.output); !checked)
        throw WrongUsage{
            ut_concat("the picture would replace ", options.output, ", ", checked.error().words)};
}

/// @param swatches  receives the colours of the file
/// @return whether it was read
bool read_colours(std::string const& path, Swatches& swatches)
{
    Result<InputFile> const input = find_input(path);
    if (!input) {
        say(path, describe_read_fault(mrFileMatOpenFailed, input.error().words));
        return false;
    }
    mrColourPalette palette;
    Fault warning;
    if (!check_result(path, read_palette(mrSource::from_path(utString(input->path)), palette, warning)))
        return false;
    if (!warning.words.empty())
        say(path, Fault{"warning: " + warning.words, warning.line});
    std::vector<giColour> colours;
    colours.reserve(static_cast<std::size_t>(palette.size()));
    utString name;
    for (int at = 0; at < palette.size(); ++at)
        colours.push_back(palette.colour(at, name));
    swatches.push_back(std::move(colours));
    return true;
}

/// @return whether all files were read
bool read_files(std::vector<std::string> const& paths, Swatches& swatches)
{
    Progress progress(paths.size());
    bool all_read = true;
    for (std::string const& path : paths) {
        progress.begin(path);
        all_read = try_work(path, [&] { return read_colours(path, swatches); }) && all_read;
    }
    return all_read;
}

/// @return whether the picture was written
bool draw(Swatches const& swatches, std::string const& path)
{
    std::vector<std::size_t> counts;
    std::size_t total = 0;
    for (std::vector<giColour> const& colours : swatches) {
        counts.push_back(colours.size());
        total += colours.size();
    }
    auto const layout = find_layout(counts);
    if (!layout) {
        say(path,
            ut_concat("a picture of at most ", SwatchLayout::max_side, " pixels on a side has no room for ",
                      format_count(total, "colour"), " of ", format_count(counts.size(), "palette")));
        return false;
    }
    // The fault names the file that fails.
    return check_result("palette", write_png(*draw_swatches(swatches, *layout), path));
}

int run_picture(PaletteOptions const& options)
{
    check_picture_usage(options);
    Swatches swatches;
    bool const all_read = read_files(options.files, swatches);
    bool const drawn =
        !swatches.empty() && try_work(options.output, [&] { return draw(swatches, options.output); });
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
    if (Result<> const checked = check_output_path(options.output); !checked)
        throw WrongUsage{
            ut_concat("the palette would replace ", options.output, ", ", checked.error().words)};
}

bool convert(std::string const& from, std::string const& path)
{
    Result<ForeignPalette> palette = read_foreign_palette(from);
    if (!check_result(from, palette))
        return false;
    Result<std::vector<std::string>> const changed_names = write_palette(std::move(palette->colours), path);
    if (!check_result(from, changed_names))
        return false;
    std::string left_out;
    for (std::string const& each : palette->left_out)
        left_out += (left_out.empty() ? "" : ", ") + each;
    if (!left_out.empty())
        say(from, "not carried over, a palette file has no place for it: " + left_out);
    for (auto const& notes : {palette->notes, *changed_names})
        for (std::string const& note : notes)
            say(from, note);
    return true;
}

int run_conversion(PaletteOptions const& options)
{
    check_conversion_usage(options);
    std::error_code ignored;
    if (!options.force && options.output != standard_output &&
        fs::exists(fs::symlink_status(options.output, ignored))) {
        say(*options.from, options.output + " is there already; --force replaces it");
        return something_failed;
    }
    bool const converted = try_work(*options.from, [&] { return convert(*options.from, options.output); });
    return converted ? all_well : something_failed;
}

} // namespace

Subcommand add_palette(CLI::App& program)
{
    auto const options = std::make_shared<PaletteOptions>();
    CLI::App* const palette = program.add_subcommand(
        "palette", "Draw palettes, or make a palette file of a GPL, ASE or rgb.txt palette");
    palette->add_option("FILE", options->files, "Palette files, to be drawn one beneath the other")
        ->type_name("");
    palette
        ->add_option("--from", options->from,
                     "A palette of another format, to be converted: GPL, ASE or rgb.txt")
        ->type_name("FILE")
        ->check(check_not_empty, "");
    palette
        ->add_option("-o,--output", options->output,
                     "The picture, a PNG file; with --from, the palette file; - for standard output")
        ->type_name("OUT")
        ->check(check_not_empty, "")
        ->required();
    palette->add_flag("--force", options->force, "With --from: replace a file that is there already");
    palette->footer("Examples: mrtool palette paints.pcp woods.pcp -o colours.png\n"
                    "          mrtool palette --from web.gpl -o web.pcp");
    return {palette, [options] { return options->from ? run_conversion(*options) : run_picture(*options); }};
}

} // namespace mrtool
