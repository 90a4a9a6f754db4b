// The program mrtool: the application's part, played over the library's public headers.
#include "commands.h"
#include "messages.h"
#include "pendingFile.h"
#include "process.h"
#include "utConcat.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <filesystem>
#include <iostream>
#include <sys/resource.h>
#include <unistd.h>

namespace {

using namespace mrtool;

std::string const size_form = ut_concat("N or WxH, each 1 to ", ThumbOptions::max_side, " pixels");
constexpr char colour_form[] = "RRGGBB in hexadecimal, with or without #, black or white";

/// Stands in front of each argument that is no option while CLI11 has it: among names of files, "[a,b]", "++"
/// and a second "--" are words of CLI11's own otherwise.
constexpr char mark = '\x01';

/// The arguments in CLI11's order, the last one first.
std::vector<std::string> marked(int argc, char** argv)
{
    std::vector<std::string> arguments;
    bool options = true;
    for (int at = 1; at < argc; ++at) {
        std::string const argument = argv[at];
        if (options && argument == "--")
            options = false;
        else if (at == 1 || (options && argument.size() > 1 && argument[0] == '-'))
            arguments.push_back(argument);
        else
            arguments.push_back(mark + argument);
    }
    std::reverse(arguments.begin(), arguments.end());
    return arguments;
}

std::string unmarked(std::string const& argument)
{
    return argument.starts_with(mark) ? argument.substr(1) : argument;
}

/// Each option and each name takes its value without the mark.
CLI::App* with_values_unmarked(CLI::App* subcommand)
{
    for (CLI::Option* const option : subcommand->get_options())
        if (option->get_items_expected_max() > 0)
            option->transform(unmarked, "");
    return subcommand;
}

std::string check_not_empty(std::string const& value)
{
    return value.empty() ? "the name is empty" : "";
}

/// Takes a whole number of the given base off the front.
bool take_number(std::string_view& form, int base, std::size_t most_digits, int& number)
{
    std::string_view const digits = form.substr(0, most_digits);
    auto const [rest, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    form.remove_prefix(static_cast<std::size_t>(rest - digits.data()));
    return error == std::errc() && number >= 0;
}

bool parse_size(std::string_view form, int& width, int& height)
{
    auto const take_side = [&](int& side) {
        return take_number(form, 10, 4, side) && side >= 1 && side <= ThumbOptions::max_side;
    };
    if (!take_side(width))
        return false;
    height = width;
    if (form.empty())
        return true;
    bool const two = form.front() == 'x';
    form.remove_prefix(1);
    return two && take_side(height) && form.empty();
}

bool parse_colour(std::string_view form, gsRGB& colour)
{
    if (form == "black" || form == "white") {
        int const component = form == "white" ? 255 : 0;
        colour = gsRGB(component, component, component);
        return true;
    }
    if (form.starts_with('#'))
        form.remove_prefix(1);
    int value = 0;
    if (form.size() != 6 || !take_number(form, 16, 6, value) || !form.empty())
        return false;
    colour = gsRGB(value >> 16, value >> 8 & 255, value & 255);
    return true;
}

CLI::App* add_thumb(CLI::App& app, ThumbOptions& options)
{
    CLI::App* const thumb =
        app.add_subcommand("thumb", "Make PNG thumbnails of materials, meshes and images");
    thumb->add_option("INPUT", options.inputs, "Material, mesh or image files, or folders of them")
        ->type_name("")
        ->required();
    thumb
        ->add_option("-o,--output", options.output,
                     "The thumbnail of one file, or the folder for several; DIR/NAME.EXT.thumb.png for "
                     "DIR/NAME.EXT when not given")
        ->type_name("OUT")
        ->check(check_not_empty, "");
    thumb
        ->add_option_function<std::string>(
            "--size",
            [&](std::string const& size) {
                if (!parse_size(size, options.width, options.height))
                    throw CLI::ValidationError("--size", ut_concat(size, " is not ", size_form));
            },
            ut_concat(size_form, "; ", options.width, " when not given"))
        ->type_name("SIZE");
    thumb->add_option("--up", options.up, "What is up in meshes: y or z; by their format when not given")
        ->type_name("AXIS")
        ->check(CLI::IsMember({"y", "z"}));
    thumb
        ->add_option_function<std::string>(
            "--background",
            [&](std::string const& colour) {
                if (!parse_colour(colour, options.background))
                    throw CLI::ValidationError("--background", ut_concat(colour, " is not ", colour_form));
            },
            ut_concat(colour_form, "; f0f0f0 when not given"))
        ->type_name("COLOUR");
    thumb->footer("Example: mrtool thumb kitchen.obj materials -o pictures --size 512");
    return with_values_unmarked(thumb);
}

CLI::App* add_import(CLI::App& app, ImportOptions& options)
{
    CLI::App* const import = app.add_subcommand("import", "Make a material file of each material of a scene");
    import->add_option("SCENE", options.scenes, "Scene files: OBJ, glTF, GLB, 3DS, PLY and more")
        ->type_name("")
        ->required();
    import->add_option("-o,--output", options.folder, "The folder for the material files; made when missing")
        ->type_name("DIR")
        ->check(check_not_empty, "")
        ->required();
    import->add_flag("--force", options.force, "Replace files that are there already");
    import->footer("Example: mrtool import kitchen.obj -o materials");
    return with_values_unmarked(import);
}

CLI::App* add_info(CLI::App& app, InfoOptions& options)
{
    CLI::App* const info =
        app.add_subcommand("info", "Tell what is in a material, palette or image cache file");
    info->add_option("FILE", options.files, "Material, palette or image cache files")
        ->type_name("")
        ->required();
    info->add_flag("--json", options.json, "Tell it in JSON");
    info->footer("Example: mrtool info oak.multimat");
    return with_values_unmarked(info);
}

CLI::App* add_palette(CLI::App& app, PaletteOptions& options)
{
    CLI::App* const palette = app.add_subcommand(
        "palette", "Draw palettes, or make a palette file of a GPL, ASE or rgb.txt palette");
    palette->add_option("FILE", options.files, "Palette files, to be drawn one beneath the other")
        ->type_name("");
    palette
        ->add_option("--from", options.from,
                     "A palette of another format, to be converted: GPL, ASE or rgb.txt")
        ->type_name("FILE")
        ->check(check_not_empty, "");
    palette
        ->add_option("-o,--output", options.output, "The picture, a PNG file; with --from, the palette file")
        ->type_name("OUT")
        ->check(check_not_empty, "")
        ->required();
    palette->add_flag("--force", options.force, "With --from: replace a file that is there already");
    palette->footer("Examples: mrtool palette paints.pcp woods.pcp -o colours.png\n"
                    "          mrtool palette --from web.gpl -o web.pcp");
    return with_values_unmarked(palette);
}

/// What makes no sense, where the reason is an argument that nothing takes.
std::string not_expected(CLI::App const& app)
{
    auto const of_app = app.remaining();
    auto const parsed = app.get_subcommands();
    if (parsed.empty())
        return of_app.empty() ? "" : "there is no subcommand or option " + unmarked(of_app.front());
    auto const of_subcommand = parsed.front()->remaining();
    if (of_subcommand.empty())
        return {};
    std::string const& name = parsed.front()->get_name();
    return ut_concat("mrtool ", name, " has no option ", of_subcommand.front(),
                     "; a file of that name goes behind --: ", "mrtool ", name, " -- ",
                     of_subcommand.front());
}

/// Says what is wrong, then how the subcommand that was named, if one was, is used.
int refuse(CLI::App const& app, std::string words)
{
    if (std::string const argument = not_expected(app); !argument.empty())
        words = argument;
    std::erase(words, mark);
    std::fprintf(stderr, "mrtool: %s\n\n%s", printable(words).c_str(), app.help().c_str());
    return wrong_usage;
}

/// "r/." names a folder also where none is there yet.
void name_as_folder(std::optional<std::string>& output)
{
    if (output && std::filesystem::path(*output).filename() == ".")
        *output += '/';
}

int run(int argc, char** argv)
{
    CLI::App app("Thumbnails of materials, meshes and images; material files out of scenes; palettes",
                 "mrtool");
    app.set_version_flag("--version", "mrtool " MRTOOL_VERSION);
    app.set_help_flag("-h,--help", "Print this and exit");
    app.require_subcommand(1);
    app.footer("mrtool SUBCOMMAND --help tells more of each.");
    ThumbOptions thumb_options;
    ImportOptions import_options;
    InfoOptions info_options;
    PaletteOptions palette_options;
    CLI::App const* const thumb = add_thumb(app, thumb_options);
    CLI::App const* const import = add_import(app, import_options);
    CLI::App const* const palette = add_palette(app, palette_options);
    add_info(app, info_options);
    try {
        app.parse(marked(argc, argv));
        name_as_folder(thumb_options.output);
        if (thumb->parsed())
            return run_thumb(thumb_options);
        if (palette->parsed())
            return run_palette(palette_options);
        return import->parsed() ? run_import(import_options) : run_info(info_options);
    } catch (CLI::Success const& asked) {
        return app.exit(asked);
    } catch (CLI::ParseError const& error) {
        return refuse(app, error.what());
    } catch (WrongUsage const& wrong) {
        return refuse(app, wrong.words);
    }
}

/// Bytes that the program, and each of its processes, may use.
constexpr std::uint64_t most_memory = std::uint64_t{4} << 30;

/// Files that the program opens must not come to lie where standard input, output or error are looked for.
/// What takes the place of one that is closed cannot be written either.
void open_standard_files()
{
    int file = 0;
    do
        file = open("/dev/null", O_RDONLY);
    while (file >= 0 && file <= STDERR_FILENO);
    close(file);
}

/// @return the status, or that of a failure where standard output did not take all that was to be told
int finished(int status)
{
    errno = 0;
    std::cout.flush();
    if (std::fflush(stdout) == 0 && !std::ferror(stdout))
        return status;
    std::string const reason = errno != 0 ? ut_concat(": ", std::strerror(errno)) : "";
    say("standard output", "cannot be written" + reason);
    return something_failed;
}

} // namespace

int main(int argc, char** argv)
{
    open_standard_files();
    // Writing to where nobody reads any more, or to a file that may grow no more, is an error like a full disk.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    remove_pending_files_on_interrupt();
    // What the program's own process reads is bounded by the file's size, which has no bound.
    sandbox::limit_memory(RLIMIT_DATA, most_memory);
    try {
        return finished(run(argc, argv));
    } catch (std::exception const& error) {
        std::fprintf(stderr, "mrtool: %s\n", error.what());
        return something_failed;
    }
}
