// The materials of glTF scenes.
#pragma once

#include "scene.h"

#include <string>

namespace mrtool {

/// Whether it is a glTF or GLB file, by its name or its beginning.
bool is_gltf(std::string const& path);

/// Reads all materials of a glTF 2 file, whether a surface has them or not. What the file leaves out is as
/// the format says: white, opaque, metal, rough.
/// @return nothing when the file is of glTF 1, which is a format of its own; else whether there is a scene
/// @param reason  receives in words why there is none
std::optional<bool> read_gltf_scene(std::string const& path, Scene& scene, std::string& reason);

} // namespace mrtool
