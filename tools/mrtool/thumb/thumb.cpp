// mrtool thumb: thumbnails of materials, meshes and images.
#include "commandLine.h"
#include "progress.h"
#include "thumbnailer.h"
#include "thumbPlan.h"
#include "utConcat.h"
#include "workers.h"

#include "gxReplacement.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <filesystem>
#include <memory>

namespace mrtool {

namespace {

/// What one thumbnail may take.
struct ThumbLimits
{
    static constexpr unsigned most_seconds = 86'400;
    static constexpr unsigned most_gibibytes = 1024;

    scReadOptions reading;
    WorkerLimits drawing;

    /// @param seconds  for reading; drawing what was read may take five times as long
    void set_time(unsigned seconds)
    {
        reading.time = std::chrono::seconds(seconds);
        drawing.job.time = 5 * reading.time;
    }

    /// @param gibibytes  for reading; drawing what was read may take twice as much
    void set_memory(unsigned gibibytes)
    {
        reading.memory = std::uint64_t{gibibytes} << 30;
        drawing.job.memory = 2 * reading.memory;
    }
};

struct ThumbOptions
{
    std::vector<std::string> inputs;
    std::optional<std::string> output;
    ThumbStyle style;
    ThumbLimits limits;
};

// ---- The options

std::string const size_form = ut_concat("N or WxH, each 1 to ", ThumbStyle::max_side, " pixels");
constexpr char colour_form[] = "RRGGBB in hexadecimal, with or without #, black or white";

/// Parses a text that is a number without a sign and nothing else.
bool parse_number(std::string_view text, int base, unsigned& number)
{
    char const* const end = text.data() + text.size();
    auto const [rest, error] = std::from_chars(text.data(), end, number, base);
    return error == std::errc() && rest == end;
}

bool parse_side(std::string_view text, int& side)
{
    unsigned number = 0;
    if (text.size() > 4 || !parse_number(text, 10, number))
        return false;
    side = static_cast<int>(number);
    return side >= 1 && side <= ThumbStyle::max_side;
}

bool parse_size(std::string_view text, ThumbStyle& style)
{
    std::size_t const cross = text.find('x');
    return parse_side(text.substr(0, cross), style.width) &&
           parse_side(cross == text.npos ? text : text.substr(cross + 1), style.height);
}

bool parse_colour(std::string_view text, gsRGB& colour)
{
    if (text == "black" || text == "white") {
        int const component = text == "white" ? 255 : 0;
        colour = gsRGB(component, component, component);
        return true;
    }
    if (text.starts_with('#'))
        text.remove_prefix(1);
    unsigned value = 0;
    if (text.size() != 6 || !parse_number(text, 16, value))
        return false;
    colour = gsRGB(value >> 16, value >> 8 & 255, value & 255);
    return true;
}

/// Adds the options that say what thumbnails look like.
void add_style(CLI::App& thumb, ThumbStyle& style)
{
    auto const set_size = [&style](std::string const& size) {
        if (!parse_size(size, style))
            throw CLI::ValidationError("--size", ut_concat(size, " is not ", size_form));
    };
    auto const set_background = [&style](std::string const& colour) {
        if (!parse_colour(colour, style.background))
            throw CLI::ValidationError("--background", ut_concat(colour, " is not ", colour_form));
    };
    thumb
        .add_option_function<std::string>("--size", set_size,
                                          ut_concat(size_form, "; ", style.width, " when not given"))
        ->type_name("SIZE");
    thumb.add_option("--up", style.up, "What is up in meshes: y or z; by their format when not given")
        ->type_name("AXIS")
        ->check(CLI::IsMember({"y", "z"}));
    thumb
        .add_option_function<std::string>("--background", set_background,
                                          ut_concat(colour_form, "; f0f0f0 when not given"))
        ->type_name("COLOUR");
}

/// Adds the options that say what a thumbnail may take.
void add_limits(CLI::App& thumb, ThumbLimits& limits)
{
    thumb
        .add_option_function<unsigned>(
            "--timeout", [&limits](unsigned seconds) { limits.set_time(seconds); },
            "Seconds that reading a file may take, and drawing it five times as many; 60 when not given")
        ->type_name("SECONDS")
        ->check(CLI::Range(1U, ThumbLimits::most_seconds));
    thumb
        .add_option_function<unsigned>(
            "--memory", [&limits](unsigned gibibytes) { limits.set_memory(gibibytes); },
            "GiB of memory that reading a file may take, and drawing it twice as many; 2 when not given")
        ->type_name("GIB")
        ->check(CLI::Range(1U, ThumbLimits::most_gibibytes));
}

// ---- The work

/// @return whether all thumbnails were made
bool make_thumbnails(std::vector<ThumbJob> const& planned, ThumbOptions const& options)
{
    // Each worker has its own copy, and makes its own renderer in it.
    Thumbnailer thumbnailer(options.style, options.limits.reading);
    Progress progress(planned.size());
    bool all_made = true;
    Jobs jobs;
    jobs.count = planned.size();
    jobs.work = [&](std::size_t number) { return thumbnailer.make(planned[number]); };
    jobs.begun = [&](std::size_t number) { progress.begin(planned[number].input); };
    jobs.done = [&](std::size_t number, JobResult const& result) {
        for (std::string const& message : result.messages)
            say(planned[number].input, message);
        all_made = all_made && result.made;
    };
    jobs.lost = [&](std::size_t number, std::string const& fate) {
        gxReplacement::remove_left_overs_of(planned[number].output);
        say(planned[number].input, "drawing it " + fate);
        all_made = false;
    };
    run_in_workers(jobs, options.limits.drawing);
    return all_made;
}

int run_thumb(ThumbOptions& options)
{
    // "r/." names a folder even if there is none yet.
    if (options.output && std::filesystem::path(*options.output).filename() == ".")
        *options.output += '/';
    ThumbPlan const plan = plan_thumbs(options.inputs, options.output);
    for (RejectedInput const& input : plan.rejected)
        say(input.path, input.reason);
    if (plan.jobs.empty() && plan.rejected.empty())
        say("thumb", "no material, mesh or image file is there");
    bool const all_made = make_thumbnails(plan.jobs, options);
    return all_made && plan.rejected.empty() ? all_well : something_failed;
}

} // namespace

Subcommand add_thumb(CLI::App& program)
{
    auto const options = std::make_shared<ThumbOptions>();
    CLI::App* const thumb =
        program.add_subcommand("thumb", "Make PNG thumbnails of materials, meshes and images");
    thumb->add_option("INPUT", options->inputs, "Material, mesh or image files, or folders of them")
        ->type_name("")
        ->required();
    thumb
        ->add_option("-o,--output", options->output,
                     "The thumbnail of one file, - for standard output, or the folder for several; "
                     "DIR/NAME.EXT.thumb.png for DIR/NAME.EXT when not given")
        ->type_name("OUT")
        ->check(check_not_empty, "");
    add_style(*thumb, options->style);
    add_limits(*thumb, options->limits);
    thumb->footer("Example: mrtool thumb kitchen.obj materials -o pictures --size 512");
    return {thumb, [options] { return run_thumb(*options); }, &options->limits.drawing.job.memory};
}

} // namespace mrtool
