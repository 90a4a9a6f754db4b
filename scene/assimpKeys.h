// What the properties of Assimp's materials mean to a material file.
#pragma once

#include "notes.h"

#include <assimp/material.h>

namespace sc {

/// The texture that colours the surface: that of the base colour, else that of the diffuse colour.
struct SurfaceTexture
{
    aiTextureType type = aiTextureType_NONE; ///< aiTextureType_NONE when there is none
    aiString path;
};

SurfaceTexture find_texture(aiMaterial const& material);

/// Notes what the material says and a material file has no place for: "the ambient colour", "the normal map
/// \"bump.png\"". Values that make no difference are left out of it.
void note_left_out(aiMaterial const& material, NoteList& notes);

} // namespace sc
