// The body that materials of one facet are shown on.
#pragma once

#include "giTriBlock.h"

namespace mrtool {

/// Makes a sphere of radius 1. A texture is seen once, upright, on the half that faces the z axis, with the
/// image's middle in the middle.
void fill_sphere(giTriBlock& block);

} // namespace mrtool
