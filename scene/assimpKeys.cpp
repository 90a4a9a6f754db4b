#include "assimpKeys.h"

#include "leftOut.h"

#include <assimp/GltfMaterial.h>
#include <string_view>

namespace sc {

namespace {

/// Of the three values that Assimp's macros stand for, the one that names the property.
constexpr std::string_view key(char const* name, unsigned, unsigned)
{
    return name;
}

/// Properties that are carried over, or that say nothing about the look of a surface on both of whose sides
/// the light falls.
constexpr std::string_view silent_keys[] = {
    key(AI_MATKEY_NAME),
    key(AI_MATKEY_COLOR_DIFFUSE),
    key(AI_MATKEY_BASE_COLOR),
    key(AI_MATKEY_OPACITY),
    key(AI_MATKEY_TRANSPARENCYFACTOR), // the source of the opacity
    key(AI_MATKEY_ROUGHNESS_FACTOR),
    key(AI_MATKEY_GLOSSINESS_FACTOR), // the source of the shininess
    key(AI_MATKEY_SHININESS),
    key(AI_MATKEY_METALLIC_FACTOR),
    key(AI_MATKEY_REFLECTIVITY),
    key(AI_MATKEY_REFRACTI),
    key(AI_MATKEY_COLOR_EMISSIVE),
    key(AI_MATKEY_EMISSIVE_INTENSITY),
    key(AI_MATKEY_TWOSIDED),
    key(AI_MATKEY_SHADING_MODEL),
    key(AI_MATKEY_ENABLE_WIREFRAME),
    key(AI_MATKEY_BUMPSCALING), // says something together with its map alone
    key(AI_MATKEY_GLTF_ALPHAMODE),
    key(AI_MATKEY_GLTF_ALPHACUTOFF),
    key(AI_MATKEY_SHEEN_ROUGHNESS_FACTOR),
    key(AI_MATKEY_CLEARCOAT_ROUGHNESS_FACTOR),
};

constexpr LeftOutValue left_out_keys[] = {
    {key(AI_MATKEY_COLOR_AMBIENT), "the ambient colour", 0, 0},
    {key(AI_MATKEY_COLOR_SPECULAR), "the specular colour", 0, 0},
    {key(AI_MATKEY_COLOR_TRANSPARENT), "the colour of transparency", 0, 1},
    {key(AI_MATKEY_COLOR_REFLECTIVE), "the colour of reflection", 0, 1},
    {key(AI_MATKEY_SHININESS_STRENGTH), "the strength of the highlight", 0, 1},
    {key(AI_MATKEY_SPECULAR_FACTOR), "the specular factor", 1, 1},
    {key(AI_MATKEY_ANISOTROPY_FACTOR), "the anisotropy", 0, 0},
    {key(AI_MATKEY_SHEEN_COLOR_FACTOR), "the sheen", 0, 0},
    {key(AI_MATKEY_CLEARCOAT_FACTOR), "the clear coat", 0, 0},
    {key(AI_MATKEY_TRANSMISSION_FACTOR), "the transmission", 0, 0},
    {key(AI_MATKEY_VOLUME_THICKNESS_FACTOR), "the thickness", 0, 0},
    {key(AI_MATKEY_VOLUME_ATTENUATION_DISTANCE), "the attenuation distance", 0, 0},
    {key(AI_MATKEY_VOLUME_ATTENUATION_COLOR), "the attenuation colour", 1, 1},
    {key(AI_MATKEY_BLEND_FUNC), "the way of blending", 0, 0},
};

constexpr LeftOutMap<unsigned> map_kinds[] = {
    {aiTextureType_DIFFUSE, "the further colour map"},
    {aiTextureType_BASE_COLOR, "the further colour map"},
    {aiTextureType_SPECULAR, "the specular map"},
    {aiTextureType_AMBIENT, "the ambient map"},
    {aiTextureType_EMISSIVE, "the emission map"},
    {aiTextureType_EMISSION_COLOR, "the emission map"},
    {aiTextureType_HEIGHT, "the bump map"},
    {aiTextureType_NORMALS, "the normal map"},
    {aiTextureType_NORMAL_CAMERA, "the normal map"},
    {aiTextureType_SHININESS, "the shininess map"},
    {aiTextureType_OPACITY, "the opacity map"},
    {aiTextureType_DISPLACEMENT, "the displacement map"},
    {aiTextureType_LIGHTMAP, "the light map"},
    {aiTextureType_AMBIENT_OCCLUSION, "the occlusion map"},
    {aiTextureType_REFLECTION, "the reflection map"},
    {aiTextureType_METALNESS, "the metalness map"},
    {aiTextureType_DIFFUSE_ROUGHNESS, "the roughness map"},
    {aiTextureType_SHEEN, "the sheen map"},
    {aiTextureType_CLEARCOAT, "the clear coat map"},
    {aiTextureType_TRANSMISSION, "the transmission map"},
};

/// A way to lay a texture, and its value for plain repeating.
struct Layout
{
    char const* key;
    int plain;
    char const* words;
};

constexpr Layout layouts[] = {
    {_AI_MATKEY_UVWSRC_BASE, 0, "the texture's choice of a further set of coordinates"},
    {_AI_MATKEY_MAPPINGMODE_U_BASE, aiTextureMapMode_Wrap, "the texture's clamping or mirroring"},
    {_AI_MATKEY_MAPPINGMODE_V_BASE, aiTextureMapMode_Wrap, "the texture's clamping or mirroring"},
    {_AI_MATKEY_MAPPING_BASE, aiTextureMapping_UV, "the texture's projection"},
    {_AI_MATKEY_TEXOP_BASE, aiTextureOp_Multiply, "the texture's way of blending"},
};

bool colours_surface(unsigned type)
{
    return type == aiTextureType_DIFFUSE || type == aiTextureType_BASE_COLOR;
}

bool makes_no_difference(aiMaterial const& material, aiMaterialProperty const& property,
                         LeftOutValue const& left_out)
{
    ai_real values[4];
    unsigned count = 4;
    return material.Get(property.mKey.C_Str(), 0, 0, values, &count) == aiReturn_SUCCESS &&
           left_out.makes_no_difference(values, std::min(count, 3u));
}

void note_value(aiMaterial const& material, aiMaterialProperty const& property, NoteList& notes)
{
    std::string_view const name = property.mKey.C_Str();
    // "$raw." repeats a property in the format's own words; "?" belongs to the scene.
    if (name.starts_with("$raw.") || name.starts_with("?") ||
        std::find(std::begin(silent_keys), std::end(silent_keys), name) != std::end(silent_keys))
        return;
    LeftOutValue const* const known = find_row(left_out_keys, name);
    if (!known)
        notes.add(scNoteLeftOut, "the property \"%1\"", name.substr(name.find('.') + 1));
    else if (!makes_no_difference(material, property, *known))
        notes.add(scNoteLeftOut, known->words);
}

/// The map's file, or nothing where a star and a number stand for an image in the scene file.
std::string name_file(aiString const& path)
{
    return path.data[0] == '*' ? "" : path.C_Str();
}

/// Whether the map that no kind is known of is there a second time under its kind.
bool known_elsewhere(aiMaterial const& material, aiString const& path)
{
    return std::any_of(std::begin(map_kinds), std::end(map_kinds), [&](auto const& kind) {
        aiString other;
        return material.Get(AI_MATKEY_TEXTURE(kind.key, 0), other) == aiReturn_SUCCESS && other == path;
    });
}

void note_map(aiMaterial const& material, aiMaterialProperty const& property, SurfaceTexture const& surface,
              NoteList& notes)
{
    aiString path;
    material.Get(_AI_MATKEY_TEXTURE_BASE, property.mSemantic, property.mIndex, path);
    if (colours_surface(property.mSemantic) && path == surface.path)
        return;
    if (auto const* const kind = find_row(map_kinds, property.mSemantic))
        notes.add(make_left_out(kind->words, name_file(path)));
    else if (!known_elsewhere(material, path))
        notes.add(make_left_out("the further map", name_file(path)));
}

void note_layout(aiMaterial const& material, aiTextureType type, NoteList& notes)
{
    for (Layout const& layout : layouts) {
        int value = layout.plain;
        material.Get(layout.key, type, 0, value);
        if (value != layout.plain)
            notes.add(scNoteLeftOut, layout.words);
    }
    aiUVTransform transform;
    material.Get(AI_MATKEY_UVTRANSFORM(type, 0), transform);
    if (transform.mTranslation != aiVector2D() || transform.mScaling != aiVector2D(1, 1) ||
        transform.mRotation != 0)
        notes.add(scNoteLeftOut, "the texture's scale, shift or turn");
    ai_real strength = 1;
    material.Get(AI_MATKEY_TEXBLEND(type, 0), strength);
    if (strength != 1)
        notes.add(scNoteLeftOut, "the texture's strength");
    int flags = 0;
    material.Get(AI_MATKEY_TEXFLAGS(type, 0), flags);
    if ((flags & aiTextureFlags_Invert) != 0)
        notes.add(scNoteLeftOut, "the texture's inversion");
}

} // namespace

SurfaceTexture find_texture(aiMaterial const& material)
{
    for (aiTextureType type : {aiTextureType_BASE_COLOR, aiTextureType_DIFFUSE}) {
        SurfaceTexture texture{type, {}};
        if (material.Get(AI_MATKEY_TEXTURE(type, 0), texture.path) == aiReturn_SUCCESS &&
            texture.path.length > 0)
            return texture;
    }
    return {};
}

void note_left_out(aiMaterial const& material, NoteList& notes)
{
    SurfaceTexture const surface = find_texture(material);
    for (unsigned at = 0; at < material.mNumProperties; ++at) {
        aiMaterialProperty const& property = *material.mProperties[at];
        std::string_view const name = property.mKey.C_Str();
        if (name == _AI_MATKEY_TEXTURE_BASE)
            note_map(material, property, surface, notes);
        else if (!name.starts_with("$tex."))
            note_value(material, property, notes);
    }
    if (surface.type != aiTextureType_NONE)
        note_layout(material, surface.type, notes);
}

} // namespace sc
