// The numbers of a plain material out of those of a scene's.
#pragma once

#include "scene.h"

#include "giColour.h"

#include <string>
#include <vector>

namespace mrtool {

/// What a plain material says of a surface; every number is in its range.
struct Surface
{
    giColour colour;
    double polish = 0.0;
    double reflect = 0.0;
    double transparency = 0.0;
    double emission = 0.0;
    double refractive_index = 1.0;
};

/// Transparency is 1 - opacity, else as said; polish is 1 - roughness, else min(1, sqrt(shininess / 1000)); reflect is the
/// metalness, else the reflectivity; emission is the largest component of the emitted colour. What the scene
/// does not say is as in a default Surface, the colour white under a texture and grey (204) elsewhere.
/// @param notes  receives in words each value that was brought into its range or otherwise changed
Surface surface_of(SceneMaterial const& material, std::vector<std::string>& notes);

} // namespace mrtool
