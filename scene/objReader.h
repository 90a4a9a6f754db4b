// The materials of OBJ scenes.
#pragma once

#include "expected.h"
#include "scScene.h"

#include <string>

namespace sc {

/// Reads the materials of all libraries that an OBJ file names, whether a surface has them or not. Where a
/// library is not found (see find_scene_file()), the MTL file that is called like the scene stands in for it.
Expected<scScene> read_obj(std::string const& path);

} // namespace sc
