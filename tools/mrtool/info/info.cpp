// mrtool info: what is in a material, palette or image cache file.
#include "commands.h"
#include "fileInfo.h"
#include "materialFault.h"
#include "messages.h"
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

/// What is told of a file on standard output.
std::string told(FileInfo const& info, bool json)
{
    if (json)
        return info_json(info);
    return info.outcome.read() ? info_text(info) : std::string();
}

/// Lets go of what was read; of what format it is stays known.
void drop_contents(FileInfo& info)
{
    std::visit([&]<class Contents>(Contents const&) { info.contents.emplace<Contents>(); }, info.contents);
}

void say_fault(FileInfo const& info)
{
    ReadOutcome const& outcome = info.outcome;
    if (outcome.line > 0)
        say(ut_concat(info.path, ":", outcome.line), outcome.fault);
    else
        say(info.path, in_words(outcome.status, outcome.fault));
}

/// Reads a file and tells what is in it.
/// @return whether it was read
bool tell(std::string const& path, bool json)
{
    FileInfo info;
    std::string contents;
    try {
        read_file_info(path, info);
        contents = told(info, json);
    } catch (std::bad_alloc const&) {
        drop_contents(info);
        info.outcome = {mrFileMatBadContent, "not enough memory", 0, {}};
        contents = told(info, json);
    }
    print(contents);
    if (!info.outcome.read())
        say_fault(info);
    return info.outcome.read();
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
        if (!tell(path, options.json))
            status = something_failed;
    }
    if (options.json)
        print("\n]}\n");
    return status;
}

} // namespace mrtool
