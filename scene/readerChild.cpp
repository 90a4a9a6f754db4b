#include "readerChild.h"

#include "childProcess.h"
#include "readHere.h"
#include "sceneWire.h"

#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <string_view>
#include <unistd.h>

namespace sc {

int run_reader(std::string const& what, std::string const& path)
{
    std::set_new_handler([] { _exit(sandbox::child_out_of_memory); });
    // The result has the pipe for itself: what a loader prints goes where it disturbs nobody.
    int const result = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    sandbox::WireWriter wire(result);
    auto const answer = [&](auto read) { wire(read); };
    if (what == materials_wanted)
        answer(read_materials_here(path));
    else if (what == surfaces_wanted)
        answer(read_surfaces_here(path));
    else if (what.starts_with(image_wanted))
        answer(read_image_here(path, static_cast<gxImageFileFormat>(
                                         std::atoi(what.c_str() + std::string_view(image_wanted).size()))));
    return wire.finish() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace sc
