#include "sceneReader.h"

#include "assimpKeys.h"
#include "fileKind.h"
#include "gltfReader.h"
#include "objReader.h"
#include "textLimits.h"
#include "utConcat.h"

#include "gxMeshFiles.h"

#include <algorithm>
#include <assimp/DefaultLogger.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <map>

namespace mrtool {

namespace {

constexpr std::size_t most_warnings = 20;

/// Keeps what Assimp says about materials and textures; it has much else to say.
class Warnings : public Assimp::LogStream
{
public:
    explicit Warnings(std::vector<std::string>& texts) : m_texts(texts) {}
    /// Says how many more there were.
    ~Warnings() override
    {
        if (m_more > 0)
            m_texts.push_back(ut_concat("and ", m_more, " more warnings of this kind"));
    }

    void write(char const* message) override
    {
        std::string warning = message;
        if (std::size_t const prefix = warning.find("T0: "); prefix != warning.npos)
            warning.erase(0, prefix + 4);
        warning.erase(warning.find_last_not_of(" \n\r") + 1);
        if (!speaks_of_materials(warning) ||
            std::find(m_texts.begin(), m_texts.end(), warning) != m_texts.end())
            return;
        if (m_texts.size() < most_warnings)
            m_texts.push_back(std::move(warning));
        else
            ++m_more;
    }

private:
    static bool speaks_of_materials(std::string words)
    {
        for (char& letter : words)
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        return words.find("material") != words.npos || words.find("texture") != words.npos;
    }

    std::vector<std::string>& m_texts;
    std::size_t m_more = 0;
};

/// The shortest decimal number that is this float, so that 0.3 stays 0.3.
double widened(float value)
{
    char digits[32];
    char const* const end = std::to_chars(digits, digits + sizeof digits, value).ptr;
    double wide = static_cast<double>(value);
    std::from_chars(digits, end, wide);
    return wide;
}

// The next two take what Assimp's macros stand for: a property's name, a kind of texture and an index.

std::optional<double> number(aiMaterial const& material, char const* key, unsigned type, unsigned index)
{
    float value = 0.0f;
    if (material.Get(key, type, index, value) != aiReturn_SUCCESS)
        return std::nullopt;
    return widened(value);
}

std::optional<SceneColour> colour(aiMaterial const& material, char const* key, unsigned type, unsigned index)
{
    aiColor3D value;
    if (material.Get(key, type, index, value) != aiReturn_SUCCESS)
        return std::nullopt;
    return SceneColour{widened(value.r), widened(value.g), widened(value.b)};
}

std::optional<SceneColour> emission(aiMaterial const& material)
{
    std::optional<SceneColour> emitted = colour(material, AI_MATKEY_COLOR_EMISSIVE);
    std::optional<double> const intensity = number(material, AI_MATKEY_EMISSIVE_INTENSITY);
    if (emitted && intensity)
        for (double& component : *emitted)
            component *= *intensity;
    return emitted;
}

SceneImage copied(aiTexture const& texture)
{
    SceneImage image;
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
    MaterialsReader(aiScene const& from, Scene& to, bool no_own_materials)
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
        for (unsigned at = 0; at < m_from.mNumMaterials; ++at) {
            if (!used[at] && made_up(*m_from.mMaterials[at]))
                continue;
            m_to.materials.push_back(read(*m_from.mMaterials[at]));
            if (coloured[at])
                m_to.materials.back().left_out.push_back("the colours of the vertices");
        }
    }

private:
    /// Whether the loader made it for surfaces without one. That of PLY files has no name, like their own.
    bool made_up(aiMaterial const& material) const
    {
        std::string_view const name = material.GetName().C_Str();
        return name == AI_DEFAULT_MATERIAL_NAME || name == "%%%DEFAULT" ||
               (m_no_own_materials && name.empty());
    }

    static bool is_cut(aiString const& text) { return text.length + 1 >= sizeof text.data; }

    SceneMaterial read(aiMaterial const& from)
    {
        SceneMaterial material;
        material.name = from.GetName().C_Str();
        material.colour = colour(from, AI_MATKEY_BASE_COLOR);
        if (!material.colour)
            material.colour = colour(from, AI_MATKEY_COLOR_DIFFUSE);
        material.opacity = number(from, AI_MATKEY_OPACITY);
        material.roughness = number(from, AI_MATKEY_ROUGHNESS_FACTOR);
        material.shininess = number(from, AI_MATKEY_SHININESS);
        material.metalness = number(from, AI_MATKEY_METALLIC_FACTOR);
        material.reflectivity = number(from, AI_MATKEY_REFLECTIVITY);
        material.refractive_index = number(from, AI_MATKEY_REFRACTI);
        material.emission = emission(from);
        read_texture(from, material);
        if (made_up(from))
            forget_made_up(material);
        else
            material.left_out = left_out_of(from);
        if (is_cut(from.GetName()))
            material.left_out.push_back("the end of its name");
        return material;
    }

    /// White and a grey are the loader's own; other colours can be those of an STL file.
    static void forget_made_up(SceneMaterial& material)
    {
        for (double const grey : {0.6, 1.0})
            if (material.colour == SceneColour{grey, grey, grey})
                material.colour.reset();
    }

    void read_texture(aiMaterial const& from, SceneMaterial& material)
    {
        aiString const path = surface_texture(from).path;
        if (path.length == 0)
            return;
        auto const [texture, index] = m_from.GetEmbeddedTextureAndIndex(path.C_Str());
        if (!texture) {
            material.texture = path.C_Str();
            return;
        }
        auto const [known, added] = m_images.try_emplace(index, static_cast<unsigned>(m_to.images.size()));
        if (added)
            m_to.images.push_back(copied(*texture));
        material.embedded = known->second;
    }

    aiScene const& m_from;
    Scene& m_to;
    bool m_no_own_materials;
    std::map<int, unsigned> m_images; ///< from Assimp's number of an image to that in the scene
};

/// Whether the file is a PLY file whose header lists no materials.
bool is_plain_ply(std::string const& path)
{
    std::string const beginning = read_beginning(path);
    return beginning.starts_with("ply") && beginning.find("element material") == beginning.npos;
}

bool read_with_assimp(std::string const& path, Scene& scene, std::string& reason)
{
    Assimp::DefaultLogger::create("", Assimp::Logger::NORMAL, 0);
    // The logger takes the stream over.
    Assimp::DefaultLogger::get()->attachStream(new Warnings(scene.warnings),
                                               Assimp::Logger::Warn | Assimp::Logger::Err);
    Assimp::Importer importer;
    importer.SetIOHandler(gx_new_mesh_files()); // the importer's
    aiScene const* const from = importer.ReadFile(path, 0);
    if (from)
        MaterialsReader(*from, scene, is_plain_ply(path)).read();
    else
        reason = importer.GetErrorString();
    Assimp::DefaultLogger::kill();
    return from != nullptr;
}

bool read_by_format(std::string const& path, Scene& scene, std::string& reason)
{
    if (extension_of(path) == "obj")
        return read_obj_scene(path, scene, reason);
    std::optional<bool> const read = is_gltf(path) ? read_gltf_scene(path, scene, reason) : std::nullopt;
    return read ? *read : read_with_assimp(path, scene, reason);
}

} // namespace

bool read_scene_file(std::string const& path, Scene& scene, std::string& reason)
{
    bool const there = read_by_format(path, scene, reason);
    keep_within_bounds(scene);
    reason = cut(std::move(reason));
    return there;
}

} // namespace mrtool
