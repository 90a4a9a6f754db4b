// The materials of glTF scenes.
#pragma once

#include "expected.h"
#include "scScene.h"

#include <string>

namespace sc {

/// Whether it is a glTF or GLB file, by its name or its beginning.
bool is_gltf(std::string const& path);

/// Reads all materials of a glTF file, whether a surface has them or not. What a glTF 2 file leaves out is
/// as the format says: white, opaque, metal, rough. glTF 1, which is a format of its own, is left to Assimp.
Expected<scScene> read_gltf(std::string const& path);

} // namespace sc
