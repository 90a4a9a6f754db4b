// mrtool info: what is in a material, palette or image cache file.
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

// Whether standard output took it all is found out at the end.
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

/// What is said of a file for which there is not enough memory. Its format stays known.
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

/// Reads a file and prints what is in it.
/// @return whether it was read
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
