#include "readers.h"

#include "assimpKeys.h"

#include "gxFileHints.h"
#include "gxMeshFiles.h"

#include <algorithm>
#include <assimp/DefaultLogger.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <charconv>
#include <cstring>
#include <map>

namespace sc {

namespace {

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

bool assimp_knows(std::string const& extension)
{
    static Assimp::Importer const importer; // making one makes all its readers, which takes long
    return importer.IsExtensionSupported(extension);
}

} // namespace sc
