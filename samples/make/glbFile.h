// glTF scenes in one file.
#pragma once

#include "mesh.h"

#include <array>
#include <string>
#include <vector>

struct GlbImage
{
    std::string name;
    std::string png;
};

struct GlbMaterial
{
    std::string name;
    std::array<double, 4> base_colour{1, 1, 1, 1}; ///< red, green, blue in sRGB, alpha, 0 to 1
    double metallic = 0;
    double roughness = 1;
    std::array<double, 3> emission{0, 0, 0}; ///< in sRGB
    int image = -1; ///< index of the image that the base colour is multiplied with, or -1
    bool double_sided = false;
};

struct GlbPart
{
    std::string name;
    int material;
    Mesh mesh;
};

/// The bytes of a GLB file: one node a part. glTF counts in metres, meshes here in centimetres.
std::string glb_bytes(std::vector<GlbImage> const& images, std::vector<GlbMaterial> const& materials,
                      std::vector<GlbPart> const& parts);
