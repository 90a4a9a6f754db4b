// Reading files in this process. The child does it, and scReader where that is wanted.
#pragma once

#include "expected.h"
#include "scScene.h"

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "gxImageFileUtils.h"

#include <string>
#include <vector>

namespace sc {

// The reasons begin with what the file is not: "not a readable scene: ".

Expected<scScene> read_materials_here(std::string const& path);
Expected<std::vector<scSurface>> read_surfaces_here(std::string const& path);
Expected<dgCounted<dgDuctImage>> read_image_here(std::string const& path, gxImageFileFormat format);

} // namespace sc
