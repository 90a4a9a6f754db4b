// Scenes: the materials of glTF, OBJ and MTL files, by the readers that are mrtool's own.
#include "fuzz.h"

#include "gltfReader.h"
#include "mtlReader.h"
#include "objReader.h"
#include "surface.h"

#include "mrFMPlainMat.h"

#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

/// A folder with a material library in it, in which every input is written: a scene may name files beside it.
struct SceneFolder
{
    SceneFolder()
    {
        std::filesystem::create_directory(path);
        write("lamp.mtl", "newmtl brass\nKd 0.8 0.6 0.2\n");
    }
    ~SceneFolder() { std::filesystem::remove_all(path); }

    /// @return the path of the file
    std::string write(char const* name, std::string const& bytes) const
    {
        std::ofstream(path / name, std::ios::binary) << bytes;
        return (path / name).string();
    }

    std::filesystem::path const path =
        std::filesystem::temp_directory_path() / ("mr-fuzz-" + std::to_string(getpid()));
};

bool is_gltf(std::string_view bytes)
{
    std::size_t const first = bytes.find_first_not_of(" \t\r\n");
    return bytes.starts_with("glTF") || (first != std::string_view::npos && bytes[first] == '{');
}

void require_surfaces(mrtool::Scene const& scene)
{
    for (mrtool::SceneMaterial const& material : scene.materials) {
        std::vector<std::string> notes;
        mrtool::Surface const surface = mrtool::surface_of(material, notes);
        for (double const number : {surface.polish, surface.reflect, surface.transparency, surface.emission,
                                    surface.refractive_index / mrFMPlainMat::max_refractive_index})
            require(number >= 0.0 && number <= 1.0, "every number of a surface is in its range");
    }
}

} // namespace

void try_input(std::string const& bytes)
{
    static SceneFolder const folder;
    mrtool::Scene scene;
    std::string reason;
    if (is_gltf(bytes)) {
        // Nothing stands for glTF 1, which is left to another reader.
        std::optional<bool> const read =
            mrtool::read_gltf_scene(folder.write("scene.gltf", bytes), scene, reason);
        require(read.value_or(true) || !reason.empty(), "a scene that does not read has a reason");
    } else {
        mrtool::read_mtl_file(folder.write("scene.mtl", bytes), scene);
        bool const read = mrtool::read_obj_scene(folder.write("scene.obj", bytes), scene, reason);
        require(read || !reason.empty(), "a scene that does not read has a reason");
    }
    require_surfaces(scene);
}
