// Material libraries of OBJ scenes.
#pragma once

#include "scScene.h"

#include <string>

namespace sc {

/// Appends the materials of an MTL file, one for each "newmtl", in the file's order.
///
/// A material has the values that the file gives, without defaults. A line that makes no sense, or that a material
/// file has no place for, is noted; the rest of the material is read.
/// @return false when the file cannot be opened
bool read_mtl_file(std::string const& path, scScene& scene);

} // namespace sc
