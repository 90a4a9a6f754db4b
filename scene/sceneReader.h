// Materials out of scene files.
#pragma once

#include "scene.h"

#include <string>

namespace mrtool {

/// Reads the materials of a scene, in its order: OBJ and glTF 2 by readers of this program's own, which miss
/// nothing, every other format by Assimp. It is only as safe as that is: see UntrustedReader.
///
/// Texts are kept within the bounds of sceneBounds.h. A material that Assimp made up for surfaces without one
/// is left out unless a surface has it.
/// @param reason  receives in words why there is no scene
bool read_scene_file(std::string const& path, Scene& scene, std::string& reason);

} // namespace mrtool
