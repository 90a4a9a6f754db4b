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

namespace {

/// Writes a value, or why there is none.
template <class T, class Write>
void answer(sandbox::WireWriter& wire, Expected<T>&& read, Write write)
{
    bool there = read.has_value();
    wire(there);
    if (there)
        write(*read);
    else
        wire(read.error());
}

void write_image(sandbox::WireWriter& wire, dgDuctImage const& image)
{
    int width = image.width();
    int height = image.height();
    wire(width);
    wire(height);
    wire.array(std::string_view(reinterpret_cast<char const*>(image.pixels()), image.byte_count()));
}

} // namespace

int run_reader(std::string const& what, std::string const& path)
{
    std::set_new_handler([] { _exit(sandbox::child_out_of_memory); });
    // The result has the pipe for itself: what a loader prints goes where it disturbs nobody.
    int const result = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    sandbox::WireWriter wire(result);
    if (what == materials_wanted)
        answer(wire, read_materials_here(path), [&](scScene& scene) { wire(scene); });
    else if (what == surfaces_wanted)
        answer(wire, read_surfaces_here(path), [&](std::vector<scSurface>& surfaces) { wire(surfaces); });
    else if (what.starts_with(image_wanted))
        answer(wire,
               read_image_here(path, static_cast<gxImageFileFormat>(
                                         std::atoi(what.c_str() + std::string_view(image_wanted).size()))),
               [&](dgCounted<dgDuctImage> const& image) { write_image(wire, *image); });
    return wire.finish() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace sc
