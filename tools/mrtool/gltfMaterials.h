// The materials that a glTF file lists.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace mrtool {

/// The names of all materials of a glTF or GLB file in its order, an empty one for a material without a name;
/// nothing when the file is neither.
///
/// Assimp reads only those that a surface has, and adds one of its own.
std::optional<std::vector<std::string>> gltf_material_names(std::string const& path);

} // namespace mrtool
