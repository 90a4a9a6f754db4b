// The materials of scenes in the formats that Assimp reads.
#pragma once

#include "expected.h"
#include "scScene.h"

#include <string>

namespace sc {

/// Reads the materials of a scene. A material that Assimp made up for surfaces without one is left out
/// unless a surface has it. It is only as safe as Assimp is.
Expected<scScene> read_with_assimp(std::string const& path);

/// Whether Assimp reads files of the extension.
/// @param extension  in lower case, without the point
bool assimp_knows(std::string const& extension);

} // namespace sc
