// Material libraries of OBJ scenes.
#pragma once

#include "scScene.h"

#include <string>

namespace sc {

/// Appends the materials of an MTL file, one for each "newmtl", in the file's order.
///
/// What a material has is what the file says: nothing is filled in. A line that makes no sense, or of which a
/// material file can make no use, is named and costs the material no more than that line.
/// @return false when the file cannot be opened
bool read_mtl_file(std::string const& path, scScene& scene);

} // namespace sc
