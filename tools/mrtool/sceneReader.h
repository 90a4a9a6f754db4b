// Materials out of scene files.
#pragma once

#include "scene.h"

#include <string>

namespace mrtool {

/// Reads the materials of any scene that Assimp reads, in the scene's order. It is only as safe as Assimp is:
/// see UntrustedReader.
///
/// A material that the loader made up for surfaces without one is left out unless a surface has it.
/// @param reason  receives in words why there is no scene
bool read_scene_file(std::string const& path, Scene& scene, std::string& reason);

} // namespace mrtool
