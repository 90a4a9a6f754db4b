#include "sceneReader.h"

#include "gltfMaterials.h"
#include "materialKeys.h"
#include "text.h"

#include <algorithm>
#include <assimp/DefaultLogger.hpp>
#include <assimp/Importer.hpp>
#include <assimp/scene.h>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <map>
#include <set>

namespace mrtool {

namespace {

constexpr std::size_t most_warnings = 20;

/// Keeps what Assimp says about materials and textures; it has much else to say.
class Warnings : public Assimp::LogStream
{
public:
    explicit Warnings(std::vector<std::string>& texts) : m_texts(texts) {}

    void write(char const* message) override
    {
        std::string warning = message;
        if (std::size_t const prefix = warning.find("T0: "); prefix != warning.npos)
            warning.erase(0, prefix + 4);
        warning.erase(warning.find_last_not_of(" \n\r") + 1);
        if (speaks_of_materials(warning) && m_texts.size() < most_warnings &&
            std::find(m_texts.begin(), m_texts.end(), warning) == m_texts.end())
            m_texts.push_back(std::move(warning));
    }

private:
    static bool speaks_of_materials(std::string words)
    {
        for (char& letter : words)
            letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
        return words.find("material") != words.npos || words.find("texture") != words.npos;
    }

    std::vector<std::string>& m_texts;
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
    MaterialsReader(aiScene const& from, Scene& to) : m_from(from), m_to(to) {}

    /// @param listed  the names of the file's own materials, where they are known
    void read(std::optional<std::vector<std::string>> const& listed)
    {
        std::vector<bool> const used = used_materials();
        for (unsigned at = 0; at < m_from.mNumMaterials; ++at) {
            aiMaterial const& material = *m_from.mMaterials[at];
            if (used[at] || (!listed && !made_up(material.GetName().C_Str())))
                m_to.materials.push_back(read(material));
        }
        if (listed)
            say_missing(*listed);
    }

private:
    std::vector<bool> used_materials() const
    {
        std::vector<bool> used(m_from.mNumMaterials, false);
        for (unsigned at = 0; at < m_from.mNumMeshes; ++at)
            if (unsigned const material = m_from.mMeshes[at]->mMaterialIndex; material < used.size())
                used[material] = true;
        return used;
    }

    static bool made_up(std::string_view name)
    {
        return name == AI_DEFAULT_MATERIAL_NAME || name == "%%%DEFAULT";
    }

    /// Says which of the file's materials the loader passed over.
    void say_missing(std::vector<std::string> const& listed)
    {
        std::multiset<std::string> read;
        for (SceneMaterial const& material : m_to.materials)
            read.insert(material.name);
        for (std::string const& name : listed) {
            if (auto const found = read.find(name); found != read.end())
                read.erase(found);
            else
                m_to.warnings.push_back(
                    text(name.empty() ? "a material without a name" : "material \"", name,
                         name.empty() ? "" : "\"",
                         ": not carried over, the loader reads those alone that a surface has"));
        }
    }

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
        material.left_out = left_out_of(from);
        return material;
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
    std::map<int, unsigned> m_images; ///< from Assimp's number of an image to that in the scene
};

} // namespace

bool read_scene_file(std::string const& path, Scene& scene, std::string& reason)
{
    Assimp::DefaultLogger::create("", Assimp::Logger::NORMAL, 0);
    // The logger takes the stream over.
    Assimp::DefaultLogger::get()->attachStream(new Warnings(scene.warnings),
                                               Assimp::Logger::Warn | Assimp::Logger::Err);
    Assimp::Importer importer;
    aiScene const* const from = importer.ReadFile(path, 0);
    if (from)
        MaterialsReader(*from, scene).read(gltf_material_names(path));
    else
        reason = importer.GetErrorString();
    Assimp::DefaultLogger::kill();
    return from != nullptr;
}

} // namespace mrtool
