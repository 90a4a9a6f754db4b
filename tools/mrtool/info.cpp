// mrtool info: what is in a material file.
#include "commands.h"
#include "fileInfo.h"
#include "messages.h"

#include <cstdio>
#include <new>
#include <string_view>

namespace mrtool {

namespace {

bool print(std::string_view text)
{
    return std::fwrite(text.data(), 1, text.size(), stdout) == text.size();
}

std::string what_became_of(FileInfo const& info)
{
    switch (info.status) {
    case mrFileMatOpenFailed:
        return "cannot be opened: " + info.fault;
    case mrFileMatNoDocument:
        return "not a material file: " + info.fault;
    default:
        return "bad content: " + info.fault;
    }
}

/// @param separator  printed before what is told in JSON
/// @return whether the file was read
bool tell(std::string const& path, bool json, char const* separator)
{
    FileInfo info;
    read_file_info(path, info);
    bool const read = info.status == mrFileMatReadOK;
    if (json)
        print(separator + info_json(info));
    else if (read)
        print(info_text(info));
    if (!read)
        say(path, what_became_of(info));
    return read;
}

} // namespace

int run_info(InfoOptions const& options)
{
    int status = all_well;
    char const* separator = "{\"files\": [\n";
    for (std::string const& path : options.files) {
        bool read = false;
        try {
            read = tell(path, options.json, separator);
            separator = ",\n";
        } catch (std::bad_alloc const&) {
            say(path, "not enough memory");
        }
        if (!read)
            status = something_failed;
    }
    if (options.json)
        print("\n]}\n");
    if (std::fflush(stdout) == 0 && !std::ferror(stdout))
        return status;
    say("standard output", "cannot be written");
    return something_failed;
}

} // namespace mrtool
