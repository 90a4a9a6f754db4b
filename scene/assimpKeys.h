// What the properties of Assimp's materials mean to a material file.
#pragma once

#include <assimp/material.h>

#include <string>
#include <vector>

namespace mrtool {

/// The texture that colours the surface: that of the base colour, else that of the diffuse colour.
struct SurfaceTexture
{
    aiTextureType type = aiTextureType_NONE; ///< aiTextureType_NONE when there is none
    aiString path;
};

SurfaceTexture surface_texture(aiMaterial const& material);

/// What the material says and a material file has no place for, in words, each once: "the ambient colour",
/// "the normal map \"bump.png\"". Values that make no difference are left out of it.
std::vector<std::string> left_out_of(aiMaterial const& material);

} // namespace mrtool
