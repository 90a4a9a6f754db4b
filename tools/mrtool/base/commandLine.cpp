#include "commandLine.h"

#include "childProcess.h"
#include "printable.h"
#include "scReader.h"
#include "utConcat.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <sys/resource.h>
#include <vector>

namespace mrtool {

namespace {

/// Precedes every argument that is no option while CLI11 parses it. Without it, CLI11 gives file names such as
/// "[a,b]", "++" and a second "--" a meaning of its own.
constexpr char mark = '\x01';

/// The arguments in the order that CLI11 wants, the last one first, with the mark where it belongs.
std::vector<std::string> mark_names(int argc, char** argv)
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

std::string remove_mark(std::string const& argument)
{
    return argument.starts_with(mark) ? argument.substr(1) : argument;
}

/// Describes the argument that no option and no subcommand accepts; empty if there is none.
std::string describe_surplus(CLI::App const& app)
{
    auto const of_app = app.remaining();
    auto const parsed = app.get_subcommands();
    if (parsed.empty())
        return of_app.empty() ? "" : "there is no subcommand or option " + remove_mark(of_app.front());
    auto const of_subcommand = parsed.front()->remaining();
    if (of_subcommand.empty())
        return {};
    std::string const& name = parsed.front()->get_name();
    return ut_concat("mrtool ", name, " has no option ", of_subcommand.front(),
                     "; a file of that name goes behind --: ", "mrtool ", name, " -- ",
                     of_subcommand.front());
}

/// Reports wrong usage, with the help of the subcommand that was named.
int refuse(CLI::App const& app, std::string words)
{
    if (std::string const surplus = describe_surplus(app); !surplus.empty())
        words = surplus;
    std::erase(words, mark);
    std::fprintf(stderr, "mrtool: %s\n\n%s", make_printable(words).c_str(), app.help().c_str());
    return wrong_usage;
}

/// The version, and what contains the processes that read foreign files.
std::string describe_version()
{
    std::string means;
    for (std::string const& each : scReader().containment())
        means += (means.empty() ? "" : ", ") + each;
    return ut_concat("mrtool ", MRTOOL_VERSION, "\ncontained by: ", means.empty() ? "nothing" : means);
}

} // namespace

std::string check_not_empty(std::string const& value)
{
    return value.empty() ? "the name is empty" : "";
}

int run_command_line(int argc, char** argv, std::span<AddSubcommand* const> subcommands)
{
    CLI::App app("Thumbnails of materials, meshes and images; material files out of scenes; palettes",
                 "mrtool");
    app.set_version_flag("--version", describe_version);
    app.set_help_flag("-h,--help", "Print this and exit");
    app.require_subcommand(1);
    app.footer("mrtool SUBCOMMAND --help tells more of each.");
    std::vector<Subcommand> added;
    for (AddSubcommand* const add : subcommands) {
        added.push_back(add(app));
        for (CLI::Option* const option : added.back().options->get_options())
            if (option->get_items_expected_max() > 0)
                option->transform(remove_mark, "");
    }
    try {
        app.parse(mark_names(argc, argv));
        auto const named = [](Subcommand const& each) { return each.options->parsed(); };
        Subcommand const& chosen = *std::find_if(added.begin(), added.end(), named);
        // Some read whole files, whose sizes have no bound.
        sandbox::limit_memory(RLIMIT_DATA, chosen.memory ? *chosen.memory : default_memory);
        return chosen.run();
    } catch (CLI::Success const& asked) {
        return app.exit(asked);
    } catch (CLI::ParseError const& error) {
        return refuse(app, error.what());
    } catch (WrongUsage const& wrong) {
        return refuse(app, wrong.words);
    }
}

} // namespace mrtool
