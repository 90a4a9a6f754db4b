// Scenes: the materials of glTF and MTL files, by the readers that are mrtool's own.
#include "fuzz.h"

#include "gltfReader.h"
#include "mtlReader.h"
#include "surface.h"

namespace {

bool read(std::string const& path, mrtool::Scene& scene)
{
    std::string reason;
    if (!mrtool::is_gltf(path))
        return mrtool::read_mtl_file(path, scene);
    bool const read = mrtool::read_gltf_scene(path, scene, reason).value_or(false);
    require(read || !reason.empty() || scene.materials.empty(), "a scene that does not read has a reason");
    return read;
}

bool in_range(double number)
{
    return number >= 0.0 && number <= 1.0;
}

} // namespace

void try_input(std::string const& bytes)
{
    MemoryFile const input(bytes);
    mrtool::Scene scene;
    if (!read(input.path(), scene))
        return;
    for (mrtool::SceneMaterial const& material : scene.materials) {
        std::vector<std::string> notes;
        mrtool::Surface const surface = mrtool::surface_of(material, notes);
        require(in_range(surface.polish) && in_range(surface.reflect) && in_range(surface.transparency) &&
                    in_range(surface.emission),
                "every number of a surface is in its range");
    }
}
