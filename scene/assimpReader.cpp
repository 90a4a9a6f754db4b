#include "readers.h"

#include "gxFileHints.h"
#include "gxMeshFiles.h"
#include "utConcat.h"
#include "utNeverDestroyed.h"

#include <assimp/DefaultLogger.hpp>
#include <assimp/GltfMaterial.h>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <charconv>
#include <cstring>
#include <map>

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

/// The texture that colours the surface: that of the base colour, else that of the diffuse colour.
struct SurfaceTexture
{
    aiTextureType type = aiTextureType_NONE; ///< aiTextureType_NONE when there is none
    aiString path;
};

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
    bool const colours_surface =
        property.mSemantic == aiTextureType_DIFFUSE || property.mSemantic == aiTextureType_BASE_COLOR;
    if (colours_surface && path == surface.path)
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

/// Notes what the material says and a material file has no place for: "the ambient colour", "the normal map
/// \"bump.png\"". Values that make no difference are left out of it.
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

constexpr std::size_t most_warnings = 20;

/// Collects what Assimp says about materials and textures while it lives; Assimp has much else to say. The
/// logger belongs to the process: one that the application has made goes on hearing all.
class Warnings : public Assimp::LogStream
{
public:
    Warnings()
    {
        if (m_own_logger)
            Assimp::DefaultLogger::create("", Assimp::Logger::NORMAL, 0);
        Assimp::DefaultLogger::get()->attachStream(this, severities);
    }
    ~Warnings() override
    {
        Assimp::DefaultLogger::get()->detachStream(this, severities);
        if (m_own_logger)
            Assimp::DefaultLogger::kill();
    }
    Warnings(Warnings const&) = delete;
    Warnings& operator=(Warnings const&) = delete;

    void write(char const* message) override
    {
        std::string text = message;
        if (std::size_t const prefix = text.find("T0: "); prefix != text.npos)
            text.erase(0, prefix + 4);
        text.erase(text.find_last_not_of(" \n\r") + 1);
        bool const on_materials = strcasestr(text.c_str(), "material") || strcasestr(text.c_str(), "texture");
        if (!on_materials || std::find(m_texts.begin(), m_texts.end(), text) != m_texts.end())
            return;
        if (m_texts.size() < most_warnings)
            m_texts.push_back(std::move(text));
        else
            ++m_more;
    }

    std::vector<scNote> list() const
    {
        std::vector<scNote> notes;
        for (std::string const& text : m_texts)
            notes.push_back(make_note(scNoteReported, "%1", text));
        if (m_more > 0)
            notes.push_back(make_note(scNoteReported, "and %1 more warnings of this kind", m_more));
        return notes;
    }

private:
    static constexpr unsigned severities = Assimp::Logger::Warn | Assimp::Logger::Err;

    std::vector<std::string> m_texts;
    std::size_t m_more = 0;
    bool m_own_logger = Assimp::DefaultLogger::isNullLogger();
};

/// The shortest decimal number that is this float, so that 0.3 stays 0.3.
double widen(float value)
{
    char digits[32];
    char const* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    double wide = static_cast<double>(value);
    std::from_chars(digits, end, wide);
    return wide;
}

// The next two get what Assimp's macros stand for: a property's name, a kind of texture and an index.

std::optional<double> get_number(aiMaterial const& material, char const* key, unsigned type, unsigned index)
{
    float value = 0.0f;
    if (material.Get(key, type, index, value) != aiReturn_SUCCESS)
        return std::nullopt;
    return widen(value);
}

std::optional<scColour> get_colour(aiMaterial const& material, char const* key, unsigned type, unsigned index)
{
    aiColor3D value;
    if (material.Get(key, type, index, value) != aiReturn_SUCCESS)
        return std::nullopt;
    return scColour{widen(value.r), widen(value.g), widen(value.b)};
}

std::optional<scColour> get_emission(aiMaterial const& material)
{
    std::optional<scColour> emitted = get_colour(material, AI_MATKEY_COLOR_EMISSIVE);
    std::optional<double> const intensity = get_number(material, AI_MATKEY_EMISSIVE_INTENSITY);
    if (emitted && intensity)
        for (double& component : *emitted)
            component *= *intensity;
    return emitted;
}

scImage copy_image(aiTexture const& texture)
{
    scImage image;
    image.name = texture.mFilename.C_Str();
    if (texture.mHeight == 0) {
        image.extension = texture.achFormatHint;
        image.bytes.assign(reinterpret_cast<char const*>(texture.pcData), texture.mWidth);
        return image;
    }
    image.width = static_cast<int>(texture.mWidth);
    image.height = static_cast<int>(texture.mHeight);
    std::size_t const count = std::size_t{texture.mWidth} * texture.mHeight;
    image.bytes.reserve(4 * count);
    for (std::size_t at = 0; at < count; ++at) {
        aiTexel const& texel = texture.pcData[at];
        for (unsigned char component : {texel.r, texel.g, texel.b, texel.a})
            image.bytes.push_back(static_cast<char>(component));
    }
    return image;
}

/// Reads the materials of one Assimp scene.
class MaterialsReader
{
public:
    /// @param no_own_materials  whether the file is known to have none of its own
    MaterialsReader(aiScene const& from, scScene& to, bool no_own_materials)
        : m_from(from), m_to(to), m_no_own_materials(no_own_materials)
    {}

    void read()
    {
        std::vector<bool> used(m_from.mNumMaterials, false);
        std::vector<bool> coloured = used;
        for (unsigned at = 0; at < m_from.mNumMeshes; ++at)
            if (unsigned const material = m_from.mMeshes[at]->mMaterialIndex; material < used.size()) {
                used[material] = true;
                coloured[material] = coloured[material] || m_from.mMeshes[at]->HasVertexColors(0);
            }
        for (unsigned at = 0; at < m_from.mNumMaterials; ++at)
            if (used[at] || !is_made_up(*m_from.mMaterials[at]))
                m_to.materials.push_back(read(*m_from.mMaterials[at], coloured[at]));
    }

private:
    /// Whether the loader made it for surfaces without one. That of PLY files has no name, like their own.
    bool is_made_up(aiMaterial const& material) const
    {
        aiString const held = material.GetName();
        std::string_view const name = held.C_Str();
        return name == AI_DEFAULT_MATERIAL_NAME || name == "%%%DEFAULT" ||
               (m_no_own_materials && name.empty());
    }

    /// @param coloured  whether vertices of its surfaces have colours
    scMaterial read(aiMaterial const& from, bool coloured)
    {
        scMaterial material;
        material.name = from.GetName().C_Str();
        material.colour = get_colour(from, AI_MATKEY_BASE_COLOR);
        if (!material.colour)
            material.colour = get_colour(from, AI_MATKEY_COLOR_DIFFUSE);
        material.opacity = get_number(from, AI_MATKEY_OPACITY);
        material.roughness = get_number(from, AI_MATKEY_ROUGHNESS_FACTOR);
        material.shininess = get_number(from, AI_MATKEY_SHININESS);
        material.metalness = get_number(from, AI_MATKEY_METALLIC_FACTOR);
        material.reflectivity = get_number(from, AI_MATKEY_REFLECTIVITY);
        material.refractive_index = get_number(from, AI_MATKEY_REFRACTI);
        material.emission = get_emission(from);
        read_texture(from, material);
        NoteList notes;
        if (is_made_up(from))
            forget_made_up(material);
        else
            note_left_out(from, notes);
        if (from.GetName().length + 1 >= sizeof aiString::data)
            notes.add(scNoteLeftOut, "the end of its name");
        if (coloured)
            notes.add(scNoteLeftOut, "the colours of the vertices");
        material.notes = notes.finish();
        return material;
    }

    /// White and a grey are the loader's own; other colours can be those of an STL file.
    static void forget_made_up(scMaterial& material)
    {
        for (double const grey : {0.6, 1.0})
            if (material.colour == scColour{grey, grey, grey})
                material.colour.reset();
    }

    void read_texture(aiMaterial const& from, scMaterial& material)
    {
        aiString const path = find_texture(from).path;
        if (path.length == 0)
            return;
        auto const [texture, index] = m_from.GetEmbeddedTextureAndIndex(path.C_Str());
        if (!texture) {
            material.texture = path.C_Str();
            return;
        }
        auto const [known, added] = m_images.try_emplace(index, m_to.images.size());
        if (added)
            m_to.images.push_back(copy_image(*texture));
        material.embedded = known->second;
    }

    aiScene const& m_from;
    scScene& m_to;
    bool m_no_own_materials;
    std::map<int, std::size_t> m_images; ///< from Assimp's number of an image to that in the scene
};

/// Whether the file is a PLY file whose header lists no materials.
bool is_plain_ply(std::string const& path)
{
    std::string const beginning = gx_read_beginning(path);
    return beginning.starts_with("ply") && beginning.find("element material") == beginning.npos;
}

std::string list_extensions()
{
    std::string list;
    Assimp::Importer().GetExtensionList(list);
    return ut_concat(";", list, ";");
}

} // namespace

Expected<scScene> read_with_assimp(std::string const& path)
{
    gxPointLocale const point;
    Warnings const warnings;
    Assimp::Importer importer;
    importer.SetIOHandler(gx_new_mesh_files()); // the importer's
    aiScene const* const from = importer.ReadFile(path, 0);
    if (!from)
        return because(importer.GetErrorString());
    scScene scene;
    MaterialsReader(*from, scene, is_plain_ply(path)).read();
    scene.notes = warnings.list();
    return scene;
}

bool is_m3d(std::string_view beginning)
{
    return beginning.starts_with("3DMO") || beginning.starts_with("3dmodel ");
}

bool assimp_knows(std::string const& extension)
{
    // Kept as text, "*.3ds;*.obj": making an importer makes all its readers, which takes long.
    static utNeverDestroyed<std::string> const list(list_extensions());
    std::string const& known = *list;
    return extension.find(';') == std::string::npos &&
           known.find(ut_concat(";*.", extension, ";")) != std::string::npos;
}

} // namespace sc
