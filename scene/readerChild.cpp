// The child's side of UntrustedReader.
#include "untrustedReader.h"

#include "sceneReader.h"
#include "wire.h"

#include "gx_read_dmt_file.h"

#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <new>
#include <unistd.h>

namespace mrtool {

namespace {

void give_block(WireWriter& wire, giTriBlock const& block)
{
    wire.array(block.nodes());
    wire.array(block.normals());
    bool textured = block.tus() != nullptr;
    wire(textured);
    if (textured)
        wire.array(*block.tus());
    wire.array(block.triangles());
}

void give(WireWriter& wire, bool there, std::string reason)
{
    wire(there);
    if (!there)
        wire(reason);
}

void read_meshes(WireWriter& wire, std::string const& path)
{
    Meshes meshes;
    utString reason;
    bool const there = gx_read_dmt_file(utString(path), meshes.blocks, &reason) != 0;
    give(wire, there, std::string("not a readable mesh: ") + reason.c_str());
    if (!there)
        return;
    auto count = static_cast<std::uint64_t>(meshes.blocks.size());
    wire(count);
    for (giTriBlock const* block : meshes.blocks)
        give_block(wire, *block);
}

void read_scene(WireWriter& wire, std::string const& path)
{
    Scene scene;
    std::string reason;
    bool const there = read_scene_file(path, scene, reason);
    give(wire, there, "not a readable scene: " + reason);
    if (there)
        wire(scene);
}

void read_image(WireWriter& wire, std::string const& path, gxImageFileFormat format)
{
    utString reason;
    auto const image = dg_hold(gxImageFileUtils::read_image_file(utString(path), format, &reason));
    give(wire, image != nullptr, std::string("not a readable image: ") + reason.c_str());
    if (!image)
        return;
    int width = image->width();
    int height = image->height();
    wire(width);
    wire(height);
    wire.array(std::string_view(reinterpret_cast<char const*>(image->pixels()), image->byte_count()));
}

} // namespace

int run_file_reader(std::string const& what, std::string const& path)
{
    std::set_new_handler([] { _exit(child_out_of_memory); });
    // The result has the pipe for itself: what a loader prints goes where it disturbs nobody.
    int const result = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    WireWriter wire(result);
    if (what == meshes_wanted)
        read_meshes(wire, path);
    else if (what == scene_wanted)
        read_scene(wire, path);
    else if (what.starts_with(image_wanted))
        read_image(wire, path,
                   static_cast<gxImageFileFormat>(std::atoi(what.c_str() + std::strlen(image_wanted))));
    return wire.finish() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace mrtool
