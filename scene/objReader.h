// The materials of OBJ scenes.
#pragma once

#include "scene.h"

#include <string>

namespace mrtool {

/// Reads the materials of all libraries that an OBJ file names, whether a surface has them or not. Where a
/// library is not found (see find_scene_file()), the MTL file that is called like the scene stands in for it.
/// @param reason  receives in words why there is no scene
bool read_obj_scene(std::string const& path, Scene& scene, std::string& reason);

} // namespace mrtool
