#include "readHere.h"

#include "childProcess.h"
#include "containment.h"
#include "placesToRead.h"
#include "readers.h"
#include "room.h"
#include "sceneWire.h"

#include "gsTriUtils.h"
#include "gx_read_dmt_file.h"
#include "gxFileHints.h"

#include <cstdlib>
#include <fcntl.h>
#include <new>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace sc {

namespace {

/// Checks for what a reader of another format would take for its own.
Expected<void> check_format(std::string const& path)
{
    if (is_m3d(gx_read_beginning(path)) && !assimp_knows("m3d"))
        return because("it is M3D, which the Assimp of this system does not read");
    return {};
}

/// The reason for a failure with the version of the format, where that may be the cause.
std::string name_version(std::string const& path, std::string reason)
{
    return is_gltf_1(path) ? "it is glTF of version 1: " + reason : reason;
}

Expected<scScene> read_scene(std::string const& path)
{
    return gx_extension(path) == "obj" ? read_obj(path)
           : is_gltf(path)             ? read_gltf(path)
                                       : read_with_assimp(path);
}

} // namespace

Expected<scScene> read_materials_here(std::string const& path)
{
    Expected<scScene> scene = check_format(path).and_then([&] { return read_scene(path); });
    if (!scene)
        return because("not a readable scene: " +
                       make_note(scNoteFailed, "%1", name_version(path, scene.error())).words());
    settle(*scene);
    return scene;
}

Expected<std::vector<scSurface>> read_surfaces_here(std::string const& path)
{
    gsOwnBlocks meshes;
    std::vector<utString> materials;
    utString reason;
    constexpr char subject[] = "not a readable mesh: ";
    if (Expected<void> const known = check_format(path); !known)
        return because(subject + known.error());
    if (!gx_read_dmt_file(utString(path), meshes.list, &reason, &materials))
        return because(subject + name_version(path, reason.c_str()));
    std::vector<scSurface> surfaces;
    for (giTriBlock*& block : meshes.list)
        surfaces.push_back({std::unique_ptr<giTriBlock>(std::exchange(block, nullptr)),
                            std::string(materials[surfaces.size()].view()),
                            {}});
    return surfaces;
}

Expected<dgCounted<dgDuctImage>> read_image_here(int file, gxImageFileFormat format)
{
    utString reason;
    dgCounted<dgDuctImage> image;
    if (gxFile const stream = gx_open_descriptor(file, reason))
        image = dg_hold(gxImageFileUtils::read_image_file(stream.get(), format, &reason));
    if (!image)
        return because(ut_concat("not a readable image: ", reason));
    return image;
}

int run_reader(std::string const& what, std::string const& path)
{
    std::set_new_handler([] { _exit(sandbox::child_out_of_memory); });
    // The result has the pipe for itself: what a loader prints goes where it disturbs nobody.
    int const result = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    dup2(open("/dev/null", O_WRONLY | O_CLOEXEC), STDOUT_FILENO);
    sandbox::WireWriter wire(result);
    auto const answer = [&](auto read) { wire(read); };
    sandbox::Containment containment =
        sandbox::contain_process(what == surfaces_wanted ? sandbox::Room::size_of(STDIN_FILENO) : 0);
    bool const is_scene = what == materials_wanted || what == surfaces_wanted;
    containment.landlock = sandbox::restrict_reading(is_scene ? places_of_scene(path) : places_of_loaders());
    if (what == materials_wanted)
        answer(read_materials_here(path));
    else if (what == surfaces_wanted) {
        sandbox::WireWriter room(STDIN_FILENO);
        auto surfaces = read_surfaces_here(path);
        room(surfaces);
        if (!room.finish())
            return sandbox::child_out_of_memory; // the room is as large as the memory that it may take
        answer(Expected<std::uint64_t>(lseek(STDIN_FILENO, 0, SEEK_CUR)));
    } else if (what.starts_with(image_wanted))
        answer(read_image_here(STDIN_FILENO, static_cast<gxImageFileFormat>(std::atoi(
                                                 what.c_str() + std::string_view(image_wanted).size()))));
    else if (what == containment_wanted)
        answer(Expected<std::vector<std::string>>(containment.words()));
    return wire.finish() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace sc
