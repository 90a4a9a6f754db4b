// mrtool info: shows the contents of material, palette and image cache files.
#include "commandLine.h"
#include "fileInfo.h"
#include "progress.h"
#include "readFile.h"

#include <CLI/CLI.hpp>

#include <cstdio>
#include <memory>
#include <new>

namespace mrtool {

namespace {

struct InfoOptions
{
    std::vector<std::string> files;
    bool json = false;
};

std::string describe(FileInfo const& info, bool json)
{
    if (json)
        return make_json(info);
    return info.is_read() ? make_text(info) : std::string();
}

/// Empties the information of a file that needs too much memory; keeps its format.
void give_up(FileInfo& info)
{
    std::visit([&]<class Contents>(Contents const&) { info.contents.emplace<Contents>(); }, info.contents);
    info.status = mrFileMatBadContent;
    info.fault = {"not enough memory"};
    info.warnings.clear();
}

/// Reads a file and prints its contents.
/// @return whether it could be read
bool print_info(std::string const& path, bool json)
{
    FileInfo info;
    std::string contents;
    try {
        read_file_info(path, info);
        contents = describe(info, json);
    } catch (std::bad_alloc const&) {
        give_up(info);
        contents = describe(info, json);
    }
    std::fputs(contents.c_str(), stdout); // its failure is reported at the end of the program
    if (info.is_read())
        return true;
    if (info.fault.line == 0)
        info.fault.words = describe_read_fault(info.status, info.fault.words);
    say(path, info.fault);
    return false;
}

int run_info(InfoOptions const& options)
{
    int status = all_well;
    char const* separator = "{\"files\": [\n";
    for (std::string const& path : options.files) {
        if (options.json)
            std::fputs(separator, stdout);
        separator = ",\n";
        if (!print_info(path, options.json))
            status = something_failed;
    }
    if (options.json)
        std::fputs("\n]}\n", stdout);
    return status;
}

} // namespace

Subcommand add_info(CLI::App& program)
{
    auto const options = std::make_shared<InfoOptions>();
    CLI::App* const info =
        program.add_subcommand("info", "Tell what is in a material, palette or image cache file");
    info->add_option("FILE", options->files, "Material, palette or image cache files")
        ->type_name("")
        ->required();
    info->add_flag("--json", options->json, "Tell it in JSON");
    info->footer("Example: mrtool info oak.multimat");
    return {info, [options] { return run_info(*options); }};
}

} // namespace mrtool
