// Scenes: the materials of glTF, OBJ and MTL files, by the readers that are mrtool's own.
#include "fuzz.h"

#include "gltfReader.h"
#include "mtlReader.h"
#include "objReader.h"
#include "surface.h"

#include "mrFMPlainMat.h"

#include <string_view>
#include <vector>

namespace {

/// By its name a file in memory is of no format.
bool is_gltf(std::string_view bytes)
{
    std::size_t const first = bytes.find_first_not_of(" \t\r\n");
    return bytes.starts_with("glTF") || (first != std::string_view::npos && bytes[first] == '{');
}

void require_in_range(double number, double most)
{
    require(number >= 0.0 && number <= most, "every number of a surface is in its range");
}

void require_surfaces(mrtool::Scene const& scene)
{
    for (mrtool::SceneMaterial const& material : scene.materials) {
        std::vector<std::string> notes;
        mrtool::Surface const surface = mrtool::surface_of(material, notes);
        for (double const number : {surface.polish, surface.reflect, surface.transparency, surface.emission})
            require_in_range(number, 1.0);
        require_in_range(surface.refractive_index, mrFMPlainMat::max_refractive_index);
    }
}

} // namespace

void try_input(std::string const& bytes)
{
    MemoryFile const input(bytes);
    mrtool::Scene scene;
    std::string reason;
    if (is_gltf(bytes)) {
        // Nothing stands for glTF 1, which is left to another reader.
        bool const read = mrtool::read_gltf_scene(input.path(), scene, reason).value_or(true);
        require(read || !reason.empty(), "a scene that does not read has a reason");
    } else {
        require(mrtool::read_mtl_file(input.path(), scene), "any text is an MTL file");
        bool const read = mrtool::read_obj_scene(input.path(), scene, reason);
        require(read || !reason.empty(), "a scene that does not read has a reason");
    }
    require_surfaces(scene);
}
