#include "gltfReader.h"

#include "fileKind.h"
#include "gltfFile.h"
#include "siblingFile.h"
#include "textLimits.h"
#include "utConcat.h"

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
    return name.empty() ? "" : ut_concat(" \"", name, "\"");
}

using Names = std::vector<std::string_view>;

bool is_one_of(std::string_view name, Names const& names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Of a sampler: the wrapping that repeats, and the filters that take the nearest pixel.
constexpr int repeating = 10497;
constexpr int nearest_filters[] = {9728, 9984, 9986};

/// From where an image is to its number in the scene. Many images of a file may be of the same bytes.
using KnownImages = std::map<ByteRange, unsigned>;

/// As if it were a buffer, the images' own text.
constexpr std::size_t data_uris = std::size_t(-1);

class GltfMaterialReader
{
public:
    GltfMaterialReader(GltfFile& file, KnownImages& images, Scene& scene)
        : m_file(file), m_images(images), m_scene(scene)
    {}

    SceneMaterial read(Json const& from)
    {
        if (!from.is_object())
            m_failures.add("it is no JSON object");
        m_to.name = string(from, "name");
        read_surface(from);
        read_alpha(from);
        read_emission(from);
        read_refraction(from);
        leave_out_maps(from);
        // What is not carried over of these is said elsewhere; "doubleSided" is of no matter to a surface that is
        // seen from both sides.
        leave_out_others(from, "",
                         {"name", "pbrMetallicRoughness", "emissiveFactor", "alphaMode", "alphaCutoff",
                          "doubleSided", "normalTexture", "occlusionTexture", "emissiveTexture"},
                         {specular_glossiness, emissive_strength, refractive_index});
        m_to.left_out = m_left_out.take();
        m_to.failures = m_failures.take();
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

    /// The member's object; a null value when there is none.
    Json const& object(Json const& from, char const* name)
    {
        static Json const none;
        Json const& value = member(from, name);
        if (value.is_object())
            return value;
        if (!value.is_null())
            fail(name);
        return none;
    }

    Json const& extension(Json const& from, char const* name)
    {
        return object(object(from, "extensions"), name);
    }

    /// The member's text; empty when there is none.
    /// @param place  where the member is, when that is not the material itself: " of its image"
    std::string string(Json const& from, char const* name, char const* place = "")
    {
        Json const& value = member(from, name);
        // One byte too many tells that it is too long.
        if (value.is_string())
            return value.get_ref<std::string const&>().substr(0, max_scene_text + 1);
        if (!value.is_null())
            fail(name, place);
        return "";
    }

    void fail(char const* name, char const* place = "")
    {
        m_failures.add(ut_concat("its \"", name, "\"", place, " makes no sense"));
    }

    void read_surface(Json const& from)
    {
        Json const& other = extension(from, specular_glossiness);
        Json const& usual = object(from, "pbrMetallicRoughness");
        bool const glossy = other.is_object();
        if (glossy && !usual.empty())
            m_to.notes.push_back(
                ut_concat("its pbrMetallicRoughness is passed over, since it has ", specular_glossiness));
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
        leave_out_others(surface,
                         ut_concat(" of its ", glossy ? specular_glossiness : "pbrMetallicRoughness"),
                         glossy ? Names{"diffuseFactor", "specularFactor", "glossinessFactor",
                                        "diffuseTexture", "specularGlossinessTexture"}
                                : Names{"baseColorFactor", "metallicFactor", "roughnessFactor",
                                        "baseColorTexture", "metallicRoughnessTexture"});
        if (Json const& texture = object(surface, glossy ? "diffuseTexture" : "baseColorTexture");
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
            leave_out(
                ut_concat("the cutting away of what is less opaque than ", cutoff, " (alphaMode MASK)"));
        } else {
            if (!mode.is_null() && mode != "OPAQUE")
                fail("alphaMode");
            if (m_opacity != 1.0)
                m_to.notes.push_back(ut_concat("its opacity of ", m_opacity,
                                               " counts for nothing, as its alphaMode is OPAQUE"));
        }
    }

    void read_emission(Json const& from)
    {
        SceneColour emission = numbers<3>(from, "emissiveFactor", {});
        Json const& strength = extension(from, emissive_strength);
        double const factor = number(strength, "emissiveStrength", 1.0);
        for (double& component : emission)
            component *= factor;
        m_to.emission = emission;
        leave_out_others(strength, ut_concat(" of its ", emissive_strength), {"emissiveStrength"});
    }

    void read_refraction(Json const& from)
    {
        Json const& ior = extension(from, refractive_index);
        if (ior.is_null())
            return;
        m_to.refractive_index = number(ior, "ior", 1.5);
        leave_out_others(ior, ut_concat(" of its ", refractive_index), {"ior"});
    }

    void leave_out(std::string words) { m_left_out.add(std::move(words)); }

    void leave_out_maps(Json const& object)
    {
        for (MapMember const& map : maps) {
            Json const& texture = this->object(object, map.name);
            if (texture.is_null())
                continue;
            Json const& image = image_of(entry(m_file.json(), "textures", member(texture, "index")));
            leave_out(map.words + in_quotes(image_name(image)));
        }
    }

    /// Leaves out what an object has besides the members and extensions that are seen to.
    /// @param place  behind the name of what is left out: " of its texture"
    void leave_out_others(Json const& object, std::string_view place, Names const& members,
                          Names const& extensions = {})
    {
        if (!object.is_object())
            return;
        for (auto const& [name, value] : object.items())
            if (!value.is_null() && name != "extensions" && name != "extras" && !is_one_of(name, members))
                leave_out(ut_concat("the member \"", name, "\"", place));
        for (auto const& [name, value] : this->object(object, "extensions").items())
            if (!value.is_null() && !is_one_of(name, extensions))
                leave_out(ut_concat("the extension ", name, place));
        if (!member(object, "extras").empty())
            leave_out(ut_concat("the extras", place));
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

    std::string image_name(Json const& index)
    {
        Json const& image = entry(m_file.json(), "images", index);
        if (std::string name = string(image, "name", " of its image"); !name.empty())
            return name;
        return is_path(member(image, "uri")) ? name_without_folders(string(image, "uri")) : std::string();
    }

    static bool is_path(Json const& uri)
    {
        return uri.is_string() && !uri.get_ref<std::string const&>().starts_with("data:");
    }

    void read_texture(Json const& use)
    {
        Json const& texture = entry(m_file.json(), "textures", member(use, "index"));
        Json const& index = image_of(texture);
        Json const& image = entry(m_file.json(), "images", index);
        std::string reason;
        if (!image.is_object())
            m_failures.add("written without its texture, an image that the scene does not have");
        else if (!take_image(index, image, reason))
            m_failures.add(
                ut_concat("written without its texture", in_quotes(image_name(index)), ": ", reason));
        leave_out_others(image, " of its image", {"name", "uri", "mimeType", "bufferView"});
        leave_out_layout(use, texture);
    }

    bool take_image(Json const& index, Json const& image, std::string& reason)
    {
        std::string const uri = string(image, "uri", " of its image");
        if (!is_path(member(image, "uri")))
            return embed(index, image, reason);
        m_to.texture = uri;
        reason = "its URI is empty";
        return !uri.empty();
    }

    /// Makes the image that stands in the scene's files the material's texture.
    bool embed(Json const& index, Json const& image, std::string& reason)
    {
        Json const& uri = member(image, "uri");
        std::optional<ByteRange> const place = uri.is_string()
                                                   ? ByteRange{data_uris, index.get<std::size_t>(), 0}
                                                   : m_file.view(member(image, "bufferView"));
        reason = "the file has no bytes for it";
        if (!place)
            return false;
        if (auto const known = m_images.find(*place); known != m_images.end()) {
            m_to.embedded = known->second;
            return true;
        }
        reason = "its \"data:\" URI makes no sense";
        std::optional<std::string> bytes = uri.is_string() ? data_uri_bytes(uri.get_ref<std::string const&>())
                                                           : m_file.bytes(*place, reason);
        if (!bytes)
            return false;
        m_to.embedded = m_images.emplace(*place, static_cast<unsigned>(m_scene.images.size())).first->second;
        std::string const kind = string(image, "mimeType", " of its image");
        m_scene.images.push_back(
            {image_name(index), kind.substr(kind.find('/') + 1), 0, 0, std::move(*bytes)});
        return true;
    }

    void leave_out_layout(Json const& use, Json const& texture)
    {
        Json const& sampler = entry(m_file.json(), "samplers", member(texture, "sampler"));
        if (!sampler.is_object() && !member(texture, "sampler").is_null())
            fail("sampler");
        for (char const* wrapping : {"wrapS", "wrapT"})
            if (number(sampler, wrapping, repeating) != repeating)
                leave_out("the texture's clamping or mirroring");
        for (char const* filter : {"magFilter", "minFilter"}) {
            double const kind = number(sampler, filter, 0);
            if (std::find(std::begin(nearest_filters), std::end(nearest_filters), kind) !=
                std::end(nearest_filters))
                leave_out("the texture's filter");
        }
        Json const& transform = extension(use, texture_transform);
        if (number(transform, "texCoord", number(use, "texCoord", 0)) != 0)
            leave_out("the texture's choice of a further set of coordinates");
        using Pair = std::array<double, 2>;
        if (numbers<2>(transform, "offset", {0, 0}) != Pair{0, 0} || number(transform, "rotation", 0) != 0 ||
            numbers<2>(transform, "scale", {1, 1}) != Pair{1, 1})
            leave_out("the texture's scale, shift or turn");
        leave_out_others(use, " of its use of the texture", {"index", "texCoord"}, {texture_transform});
        leave_out_others(transform, ut_concat(" of its ", texture_transform),
                         {"offset", "rotation", "scale", "texCoord"});
        leave_out_others(texture, " of its texture", {"name", "sampler", "source"}, image_formats(texture));
        leave_out_others(sampler, " of its texture's sampler",
                         {"name", "wrapS", "wrapT", "magFilter", "minFilter"});
    }

    /// The extensions that stand for the texture's image in a further format.
    Names image_formats(Json const& texture)
    {
        Names formats;
        for (auto const& [name, value] : object(texture, "extensions").items())
            if (!member(value, "source").is_null())
                formats.push_back(name);
        return formats;
    }

    GltfFile& m_file;
    KnownImages& m_images;
    Scene& m_scene;
    SceneMaterial m_to;
    Words m_left_out;
    Words m_failures;
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

/// Says which extensions of the file as a whole are left out that speak of materials.
void leave_out_extensions(Json const& file, Scene& scene)
{
    Json const& extensions = member(file, "extensions");
    if (!extensions.is_object())
        return;
    for (auto const& [name, value] : extensions.items())
        if (name.find("material") != name.npos || name.find("texture") != name.npos)
            scene.warnings.push_back(ut_concat("the extension ", name, " of the file: not carried over"));
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
    KnownImages images;
    Json const& materials = member(file.json(), "materials");
    if (!materials.is_array() && !materials.is_null()) {
        reason = "its materials are no list";
        return false;
    }
    for (Json const& material : materials)
        scene.materials.push_back(GltfMaterialReader(file, images, scene).read(material));
    leave_out_vertex_colours(file.json(), scene);
    scene.warnings = file.warnings();
    leave_out_extensions(file.json(), scene);
    return true;
}

} // namespace mrtool
