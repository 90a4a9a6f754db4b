// mrtool info: shows the contents of material, palette and image cache files.
#include "commands.h"
#include "fileInfo.h"
#include "messages.h"
#include "readFault.h"
#include "utConcat.h"

#include <cstdio>
#include <new>
#include <string_view>

namespace mrtool {

namespace {

// A failing standard output is reported at the end of the program.
void print(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

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
    info.fault = "not enough memory";
    info.line = 0;
    info.warnings.clear();
}

void say_fault(FileInfo const& info)
{
    if (info.line > 0)
        say(ut_concat(info.path, ":", info.line), info.fault);
    else
        say(info.path, describe_read_fault(info.status, info.fault));
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
    print(contents);
    if (!info.is_read())
        say_fault(info);
    return info.is_read();
}

} // namespace

int run_info(InfoOptions const& options)
{
    int status = all_well;
    char const* separator = "{\"files\": [\n";
    for (std::string const& path : options.files) {
        if (options.json)
            print(separator);
        separator = ",\n";
        if (!print_info(path, options.json))
            status = something_failed;
    }
    if (options.json)
        print("\n]}\n");
    return status;
}

} // namespace mrtool
