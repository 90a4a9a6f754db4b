#include "gltfReader.h"

#include "fileKind.h"
#include "gltfFile.h"
#include "sceneFile.h"
#include "text.h"

#include <algorithm>
#include <map>

namespace mrtool {

namespace {

constexpr char specular_glossiness[] = "KHR_materials_pbrSpecularGlossiness";
constexpr char emissive_strength[] = "KHR_materials_emissive_strength";
constexpr char refractive_index[] = "KHR_materials_ior";
constexpr char texture_transform[] = "KHR_texture_transform";

/// Members of a material and of its extensions that have no place in a material file.
struct MapMember
{
    char const* name;
    char const* words;
};

constexpr MapMember maps[] = {
    {"metallicRoughnessTexture", "the metalness and roughness map"},
    {"specularGlossinessTexture", "the specular and glossiness map"},
    {"normalTexture", "the normal map"},
    {"occlusionTexture", "the occlusion map"},
    {"emissiveTexture", "the emission map"},
};

/// A blank and the name; nothing when there is none.
std::string in_quotes(std::string const& name)
{
    return name.empty() ? "" : text(" \"", name, "\"");
}

template <std::size_t Size>
bool is_one_of(std::string const& word, char const* const (&words)[Size])
{
    return std::find(words, words + Size, word) != words + Size;
}

/// Carried over, or said elsewhere, or of no matter to the look of a surface that is seen from both sides.
constexpr char const* known_members[] = {
    "name",          "pbrMetallicRoughness", "emissiveFactor",  "alphaMode",  "alphaCutoff", "doubleSided",
    "normalTexture", "occlusionTexture",     "emissiveTexture", "extensions", "extras"};
constexpr char const* known_extensions[] = {specular_glossiness, emissive_strength, refractive_index};

// Of a sampler: the wrapping that repeats, and the filters that take the nearest pixel.
constexpr int repeating = 10497;
constexpr int nearest_filters[] = {9728, 9984, 9986};

class GltfMaterialReader
{
public:
    GltfMaterialReader(GltfFile& file, std::map<std::size_t, unsigned>& images, Scene& scene)
        : m_file(file), m_images(images), m_scene(scene)
    {}

    SceneMaterial read(Json const& from)
    {
        if (!from.is_object())
            m_to.failures.push_back("it is no JSON object");
        if (Json const& name = member(from, "name"); name.is_string())
            m_to.name = name.get<std::string>();
        read_surface(from);
        read_alpha(from);
        read_emission(from);
        Json const& extensions = member(from, "extensions");
        if (Json const& ior = member(extensions, refractive_index); !ior.is_null())
            m_to.refractive_index = number(ior, "ior", 1.5);
        leave_out_maps(from);
        leave_out_others(from, extensions);
        return std::move(m_to);
    }

private:
    /// The member's number, or what the format takes for one that is not there.
    double number(Json const& object, char const* name, double otherwise)
    {
        Json const& value = member(object, name);
        if (value.is_number())
            return value.get<double>();
        if (!value.is_null())
            fail(name);
        return otherwise;
    }

    /// The like for as many numbers.
    template <std::size_t Size>
    std::array<double, Size> numbers(Json const& object, char const* name, std::array<double, Size> otherwise)
    {
        Json const& values = member(object, name);
        bool const good =
            values.is_array() && values.size() == Size &&
            std::all_of(values.begin(), values.end(), [](Json const& each) { return each.is_number(); });
        if (good)
            std::transform(values.begin(), values.end(), otherwise.begin(),
                           [](Json const& each) { return each.get<double>(); });
        else if (!values.is_null())
            fail(name);
        return otherwise;
    }

    void fail(char const* name) { m_to.failures.push_back(text("its \"", name, "\" makes no sense")); }

    void read_surface(Json const& from)
    {
        Json const& other = member(member(from, "extensions"), specular_glossiness);
        Json const& usual = member(from, "pbrMetallicRoughness");
        bool const glossy = other.is_object();
        Json const& surface = glossy ? other : usual;
        auto const colour =
            numbers<4>(surface, glossy ? "diffuseFactor" : "baseColorFactor", {1.0, 1.0, 1.0, 1.0});
        m_to.colour = SceneColour{colour[0], colour[1], colour[2]};
        m_opacity = colour[3];
        if (glossy) {
            m_to.roughness = 1.0 - number(surface, "glossinessFactor", 1.0);
            if (numbers<3>(surface, "specularFactor", {1.0, 1.0, 1.0}) != SceneColour{})
                leave_out("the specular colour");
        } else {
            m_to.roughness = number(surface, "roughnessFactor", 1.0);
            m_to.metalness = number(surface, "metallicFactor", 1.0);
        }
        leave_out_maps(surface);
        if (Json const& texture = member(surface, glossy ? "diffuseTexture" : "baseColorTexture");
            !texture.is_null())
            read_texture(texture);
    }

    void read_alpha(Json const& from)
    {
        Json const& mode = member(from, "alphaMode");
        if (mode == "BLEND") {
            m_to.opacity = m_opacity;
        } else if (mode == "MASK") {
            double const cutoff = number(from, "alphaCutoff", 0.5);
            m_to.opacity = m_opacity < cutoff ? 0.0 : 1.0;
            leave_out(text("the cutting away of what is less opaque than ", cutoff, " (alphaMode MASK)"));
        } else {
            if (!mode.is_null() && mode != "OPAQUE")
                fail("alphaMode");
            if (m_opacity != 1.0)
                m_to.notes.push_back(
                    text("its opacity of ", m_opacity, " counts for nothing, as its alphaMode is OPAQUE"));
        }
    }

    void read_emission(Json const& from)
    {
        SceneColour emission = numbers<3>(from, "emissiveFactor", {});
        double const strength =
            number(member(member(from, "extensions"), emissive_strength), "emissiveStrength", 1.0);
        for (double& component : emission)
            component *= strength;
        m_to.emission = emission;
    }

    void leave_out(std::string words)
    {
        if (std::find(m_to.left_out.begin(), m_to.left_out.end(), words) == m_to.left_out.end())
            m_to.left_out.push_back(std::move(words));
    }

    void leave_out_maps(Json const& object)
    {
        for (MapMember const& map : maps) {
            Json const& texture = member(object, map.name);
            if (texture.is_null())
                continue;
            Json const& image = image_of(entry(m_file.json(), "textures", member(texture, "index")));
            leave_out(map.words + in_quotes(image_name(image)));
        }
    }

    void leave_out_others(Json const& from, Json const& extensions)
    {
        if (from.is_object())
            for (auto const& [name, value] : from.items())
                if (!is_one_of(name, known_members))
                    leave_out(text("the member \"", name, "\""));
        if (extensions.is_object())
            for (auto const& [name, value] : extensions.items())
                if (!is_one_of(name, known_extensions))
                    leave_out(text("the extension ", name));
        if (!member(from, "extras").empty())
            leave_out("the extras");
    }

    /// The number of the texture's image: its own, else that of the first extension that has one, which stands
    /// for a further format of images.
    static Json const& image_of(Json const& texture)
    {
        Json const& extensions = member(texture, "extensions");
        if (!member(texture, "source").is_null() || !extensions.is_object())
            return member(texture, "source");
        for (Json const& extension : extensions)
            if (Json const& source = member(extension, "source"); !source.is_null())
                return source;
        return member(texture, "source");
    }

    std::string image_name(Json const& index) const
    {
        Json const& image = entry(m_file.json(), "images", index);
        if (Json const& name = member(image, "name"); name.is_string())
            return name.get<std::string>();
        Json const& uri = member(image, "uri");
        bool const file = uri.is_string() && !uri.get_ref<std::string const&>().starts_with("data:");
        return file ? name_without_folders(uri.get<std::string>()) : std::string();
    }

    void read_texture(Json const& use)
    {
        Json const& texture = entry(m_file.json(), "textures", member(use, "index"));
        Json const& index = image_of(texture);
        Json const& image = entry(m_file.json(), "images", index);
        Json const& uri = member(image, "uri");
        std::string reason;
        if (!image.is_object())
            m_to.failures.push_back("written without its texture, an image that the scene does not have");
        else if (uri.is_string() && !uri.get_ref<std::string const&>().starts_with("data:"))
            m_to.texture = uri.get<std::string>();
        else if (!embed(index, image, reason))
            m_to.failures.push_back(
                text("written without its texture", in_quotes(image_name(index)), ": ", reason));
        leave_out_layout(use, texture);
    }

    /// Makes the image that stands in the scene's files the material's texture.
    bool embed(Json const& index, Json const& image, std::string& reason)
    {
        auto const [known, added] =
            m_images.try_emplace(index.get<std::size_t>(), static_cast<unsigned>(m_scene.images.size()));
        if (added) {
            Json const& uri = member(image, "uri");
            reason = "its \"data:\" URI makes no sense";
            std::optional<std::string> bytes = uri.is_string()
                                                   ? data_uri_bytes(uri.get_ref<std::string const&>())
                                                   : m_file.view_bytes(member(image, "bufferView"), reason);
            if (!bytes) {
                m_images.erase(known);
                return false;
            }
            Json const& type = member(image, "mimeType");
            std::string const kind = type.is_string() ? type.get<std::string>() : std::string();
            m_scene.images.push_back(
                {image_name(index), kind.substr(kind.find('/') + 1), 0, 0, std::move(*bytes)});
        }
        m_to.embedded = known->second;
        return true;
    }

    void leave_out_layout(Json const& use, Json const& texture)
    {
        Json const& sampler = entry(m_file.json(), "samplers", member(texture, "sampler"));
        for (char const* wrapping : {"wrapS", "wrapT"})
            if (number(sampler, wrapping, repeating) != repeating)
                leave_out("the texture's clamping or mirroring");
        for (char const* filter : {"magFilter", "minFilter"}) {
            double const kind = number(sampler, filter, 0);
            if (std::find(std::begin(nearest_filters), std::end(nearest_filters), kind) !=
                std::end(nearest_filters))
                leave_out("the texture's filter");
        }
        Json const& transform = member(member(use, "extensions"), texture_transform);
        if (number(transform, "texCoord", number(use, "texCoord", 0)) != 0)
            leave_out("the texture's choice of a further set of coordinates");
        using Pair = std::array<double, 2>;
        if (numbers<2>(transform, "offset", {0, 0}) != Pair{0, 0} || number(transform, "rotation", 0) != 0 ||
            numbers<2>(transform, "scale", {1, 1}) != Pair{1, 1})
            leave_out("the texture's scale, shift or turn");
    }

    GltfFile& m_file;
    std::map<std::size_t, unsigned>& m_images; ///< from the file's number of an image to that in the scene
    Scene& m_scene;
    SceneMaterial m_to;
    double m_opacity = 1.0; ///< as far as the way of blending lets it count
};

/// Says of the materials whose surfaces have coloured vertices that those are left out.
void leave_out_vertex_colours(Json const& file, Scene& scene)
{
    std::vector<bool> coloured(scene.materials.size(), false);
    for (Json const& mesh : member(file, "meshes"))
        for (Json const& part : member(mesh, "primitives")) {
            Json const& material = member(part, "material");
            bool const known =
                material.is_number_unsigned() && material.get<std::size_t>() < scene.materials.size();
            if (known && !member(member(part, "attributes"), "COLOR_0").is_null())
                coloured[material.get<std::size_t>()] = true;
        }
    for (std::size_t at = 0; at < coloured.size(); ++at)
        if (coloured[at])
            scene.materials[at].left_out.push_back("the colours of the vertices");
}

} // namespace

bool is_gltf(std::string const& path)
{
    std::string const extension = extension_of(path);
    return extension == "gltf" || extension == "glb" || read_beginning(path).starts_with("glTF");
}

std::optional<bool> read_gltf_scene(std::string const& path, Scene& scene, std::string& reason)
{
    if (read_beginning(path).starts_with("glTF\1"))
        return std::nullopt;
    GltfFile file(path);
    if (!file.read(reason))
        return false;
    Json const& version = member(member(file.json(), "asset"), "version");
    if (!version.is_string()) {
        reason = "no glTF version in it";
        return false;
    }
    if (version.get_ref<std::string const&>().starts_with("1."))
        return std::nullopt;
    std::map<std::size_t, unsigned> images;
    Json const& materials = member(file.json(), "materials");
    if (!materials.is_array() && !materials.is_null()) {
        reason = "its materials are no list";
        return false;
    }
    for (Json const& material : materials)
        scene.materials.push_back(GltfMaterialReader(file, images, scene).read(material));
    leave_out_vertex_colours(file.json(), scene);
    scene.warnings = file.warnings();
    return true;
}

} // namespace mrtool
