// The program mrtool: its subcommands, and what its process needs before one of them runs.
#include "commandLine.h"
#include "outputFile.h"
#include "progress.h"
#include "utConcat.h"

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <fcntl.h>
#include <iostream>
#include <unistd.h>

namespace mrtool {

// Each is defined in the folder of its name; help lists them in the order of the array.
AddSubcommand add_thumb, add_import, add_palette, add_info;

} // namespace mrtool

namespace {

using namespace mrtool;

constexpr AddSubcommand* subcommands[] = {add_thumb, add_import, add_palette, add_info};

/// Opens standard input, output and error where they are closed, so that no other file gets their numbers. What
/// is opened cannot be written, so that writing to it still fails.
void open_standard_files()
{
    int file = 0;
    do
        file = open("/dev/null", O_RDONLY);
    while (file >= 0 && file <= STDERR_FILENO);
    close(file);
}

/// Flushes standard output.
/// @return @p status, or something_failed when standard output did not accept everything
int finish(int status)
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
    // Writing to a closed pipe or beyond the file size limit becomes an error, as on a full disk.
    std::signal(SIGPIPE, SIG_IGN);
    std::signal(SIGXFSZ, SIG_IGN);
    remove_pending_file_on_interrupt();
    try {
        return finish(run_command_line(argc, argv, subcommands));
    } catch (std::exception const& error) {
        std::fprintf(stderr, "mrtool: %s\n", error.what());
        return something_failed;
    }
}
