#include "readers.h"

#include "gltfFile.h"
#include "siblingFile.h"

#include "gxFileHints.h"
#include "utNeverDestroyed.h"

#include <map>

namespace sc {

namespace {

constexpr char specular_glossiness[] = "KHR_materials_pbrSpecularGlossiness";
constexpr char emissive_strength[] = "KHR_materials_emissive_strength";
constexpr char refractive_index[] = "KHR_materials_ior";
constexpr char transmission[] = "KHR_materials_transmission";
constexpr char texture_transform[] = "KHR_texture_transform";

/// Extensions whose place in a material file is known to be none; of others, the name alone is said.
constexpr LeftOutMap<std::string_view> left_out_extensions[] = {
    {"KHR_materials_specular", "the strength and colour of reflections"},
    {"KHR_materials_clearcoat", "the clear coat"},
    {"KHR_materials_sheen", "the sheen"},
};

/// Members of a material and of its extensions that have no place in a material file.
constexpr LeftOutMap<char const*> maps[] = {
    {"metallicRoughnessTexture", "the metalness and roughness map"},
    {"specularGlossinessTexture", "the specular and glossiness map"},
    {"normalTexture", "the normal map"},
    {"occlusionTexture", "the occlusion map"},
    {"emissiveTexture", "the emission map"},
    {"transmissionTexture", "the transmission map"},
};

using Names = std::vector<std::string_view>;

/// The members of either object in which a material has its surface.
struct SurfaceModel
{
    char const* name;
    char const* colour;
    char const* texture;
    Names members;
};

SurfaceModel const usual_model = {
    "pbrMetallicRoughness",
    "baseColorFactor",
    "baseColorTexture",
    {"baseColorFactor", "metallicFactor", "roughnessFactor", "baseColorTexture", "metallicRoughnessTexture"}};
SurfaceModel const glossy_model = {
    specular_glossiness,
    "diffuseFactor",
    "diffuseTexture",
    {"diffuseFactor", "specularFactor", "glossinessFactor", "diffuseTexture", "specularGlossinessTexture"}};

bool is_one_of(std::string_view name, Names const& names)
{
    return std::find(names.begin(), names.end(), name) != names.end();
}

// Of a sampler: the wrapping that repeats, and the filters that take the nearest pixel.
constexpr int repeating = 10497;
constexpr int nearest_filters[] = {9728, 9984, 9986};

/// From where an image is to its number in the scene. Many images of a file may be of the same bytes.
using KnownImages = std::map<ByteRange, std::size_t>;

/// As if it were a buffer, the images' own text.
constexpr std::size_t data_uris = std::size_t(-1);

class GltfMaterialReader
{
public:
    GltfMaterialReader(GltfFile& file, KnownImages& images, scScene& scene)
        : m_file(file), m_images(images), m_scene(scene)
    {}

    /// @param coloured  whether vertices of its surfaces have colours
    scMaterial read(Json const& from, bool coloured)
    {
        if (!from.is_object())
            m_notes.add(scNoteFailed, "it is no JSON object");
        m_to.name = read_string(from, "name");
        m_to.linear = true;
        read_alpha(from, read_surface(from));
        read_transmission(from);
        read_emission(from);
        read_refraction(from);
        leave_out_maps(from);
        // The functions above note what these leave out. "doubleSided" makes no difference, since every
        // surface is seen from both sides.
        leave_out_others(from, "",
                         {"name", "pbrMetallicRoughness", "emissiveFactor", "alphaMode", "alphaCutoff",
                          "doubleSided", "normalTexture", "occlusionTexture", "emissiveTexture"},
                         {specular_glossiness, transmission, emissive_strength, refractive_index});
        if (coloured)
            leave_out("the colours of the vertices");
        m_to.notes = m_notes.finish();
        return std::move(m_to);
    }

private:
    /// The member's number.
    /// @param otherwise  the format's default for a missing member
    double read_number(Json const& object, char const* name, double otherwise)
    {
        Json const& value = get_member(object, name);
        if (value.is_number())
            return value.get<double>();
        if (!value.is_null())
            fail(name);
        return otherwise;
    }

    /// The member's numbers, all of them or none.
    template <std::size_t Size>
    std::array<double, Size> read_numbers(Json const& object, char const* name,
                                          std::array<double, Size> otherwise)
    {
        Json const& values = get_member(object, name);
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

    /// The member's object, or null.
    Json const& get_object(Json const& from, char const* name)
    {
        static utNeverDestroyed<Json> const none;
        Json const& value = get_member(from, name);
        if (value.is_object())
            return value;
        if (!value.is_null())
            fail(name);
        return *none;
    }

    Json const& get_extension(Json const& from, char const* name)
    {
        return get_object(get_object(from, "extensions"), name);
    }

    /// The member's text; empty without one.
    /// @param place  where the member is, when that is not the material itself: " of its image"
    std::string read_string(Json const& from, char const* name, char const* place = "")
    {
        Json const& value = get_member(from, name);
        // One byte too many tells that it is too long.
        if (value.is_string())
            return value.get_ref<std::string const&>().substr(0, scMaterial::max_text + 1);
        if (!value.is_null())
            fail(name, place);
        return "";
    }

    void fail(char const* name, char const* place = "")
    {
        m_notes.add(scNoteFailed, ut_concat("its \"%1\"", place, " makes no sense"), name);
    }

    /// @return the opacity, as far as the way of blending lets it count
    double read_surface(Json const& from)
    {
        Json const& glossy = get_extension(from, specular_glossiness);
        Json const& usual = get_object(from, usual_model.name);
        SurfaceModel const& model = glossy.is_object() ? glossy_model : usual_model;
        Json const& surface = glossy.is_object() ? glossy : usual;
        auto const colour = read_numbers<4>(surface, model.colour, {1.0, 1.0, 1.0, 1.0});
        m_to.colour = scColour{colour[0], colour[1], colour[2]};
        if (!glossy.is_object()) {
            m_to.roughness = read_number(usual, "roughnessFactor", 1.0);
            m_to.metalness = read_number(usual, "metallicFactor", 1.0);
        } else {
            m_to.roughness = 1.0 - read_number(glossy, "glossinessFactor", 1.0);
            if (!usual.empty())
                m_notes.add(scNoteChanged, "its %1 is passed over, since it has %2", usual_model.name,
                            specular_glossiness);
            if (read_numbers<3>(glossy, "specularFactor", {1.0, 1.0, 1.0}) != scColour{})
                leave_out("the specular colour");
        }
        leave_out_maps(surface);
        leave_out_others(surface, ut_concat(" of its ", model.name), model.members);
        if (Json const& texture = get_object(surface, model.texture); !texture.is_null())
            read_texture(texture);
        return colour[3];
    }

    void read_alpha(Json const& from, double opacity)
    {
        Json const& mode = get_member(from, "alphaMode");
        if (mode == "BLEND") {
            m_to.opacity = opacity;
        } else if (mode == "MASK") {
            double const cutoff = read_number(from, "alphaCutoff", 0.5);
            m_to.opacity = opacity < cutoff ? 0.0 : 1.0;
            leave_out("the cutting away of what is less opaque than %1 (alphaMode MASK)", cutoff);
        } else {
            if (!mode.is_null() && mode != "OPAQUE")
                fail("alphaMode");
            if (opacity != 1.0)
                m_notes.add(scNoteChanged, "its opacity of %1 counts for nothing, as its alphaMode is OPAQUE",
                            opacity);
        }
    }

    /// Takes the transmission as the transparency where alpha lets less light through.
    void read_transmission(Json const& from)
    {
        Json const& glass = get_extension(from, transmission);
        double const factor = read_number(glass, "transmissionFactor", 0.0);
        if (factor > 1.0 - m_to.opacity.value_or(1.0)) {
            m_to.opacity.reset();
            m_to.transparency = factor;
        } else if (factor != 0.0) {
            leave_out("the transmission of %1, since alpha makes it more transparent", factor);
        }
        leave_out_maps(glass);
        leave_out_others(glass, ut_concat(" of its ", transmission),
                         {"transmissionFactor", "transmissionTexture"});
    }

    void read_emission(Json const& from)
    {
        scColour emission = read_numbers<3>(from, "emissiveFactor", {});
        Json const& strength = get_extension(from, emissive_strength);
        double const factor = read_number(strength, "emissiveStrength", 1.0);
        for (double& component : emission)
            component *= factor;
        m_to.emission = emission;
        leave_out_others(strength, ut_concat(" of its ", emissive_strength), {"emissiveStrength"});
    }

    void read_refraction(Json const& from)
    {
        Json const& ior = get_extension(from, refractive_index);
        if (ior.is_null())
            return;
        m_to.refractive_index = read_number(ior, "ior", 1.5);
        leave_out_others(ior, ut_concat(" of its ", refractive_index), {"ior"});
    }

    template <class... Arguments>
    void leave_out(std::string pattern, Arguments const&... arguments)
    {
        m_notes.add(scNoteLeftOut, std::move(pattern), arguments...);
    }

    void leave_out_maps(Json const& object)
    {
        for (auto const& map : maps) {
            Json const& texture = get_object(object, map.key);
            if (texture.is_null())
                continue;
            Json const& image =
                find_image(get_entry(m_file.json(), "textures", get_member(texture, "index")));
            m_notes.add(make_left_out(map.words, name_image(image)));
        }
    }

    /// Notes all members and extensions of an object but those that are read.
    /// @param place  follows the name in the note: " of its texture"
    void leave_out_others(Json const& object, std::string_view place, Names const& members,
                          Names const& extensions = {})
    {
        if (!object.is_object())
            return;
        for (auto const& [name, value] : object.items())
            if (!value.is_null() && name != "extensions" && name != "extras" && !is_one_of(name, members))
                leave_out(ut_concat("the member \"%1\"", place), name);
        for (auto const& [name, value] : get_object(object, "extensions").items())
            if (!value.is_null() && !is_one_of(name, extensions)) {
                auto const* const known = find_row(left_out_extensions, std::string_view(name));
                leave_out(ut_concat(known ? known->words : "the extension", known ? " (%1)" : " %1", place),
                          name);
            }
        if (!get_member(object, "extras").empty())
            leave_out(ut_concat("the extras", place));
    }

    /// The number of the texture's image: its own, else that of the first extension that has one, which
    /// stands for a further format of images.
    static Json const& find_image(Json const& texture)
    {
        Json const& source = get_member(texture, "source");
        Json const& extensions = get_member(texture, "extensions");
        if (source.is_null() && extensions.is_object())
            for (Json const& extension : extensions)
                if (Json const& other = get_member(extension, "source"); !other.is_null())
                    return other;
        return source;
    }

    std::string name_image(Json const& index)
    {
        Json const& image = get_entry(m_file.json(), "images", index);
        if (std::string name = read_string(image, "name", " of its image"); !name.empty())
            return name;
        return is_path(get_member(image, "uri")) ? strip_folders(read_string(image, "uri")) : std::string();
    }

    static bool is_path(Json const& uri)
    {
        return uri.is_string() && !uri.get_ref<std::string const&>().starts_with("data:");
    }

    void read_texture(Json const& use)
    {
        Json const& texture = get_entry(m_file.json(), "textures", get_member(use, "index"));
        Json const& index = find_image(texture);
        Json const& image = get_entry(m_file.json(), "images", index);
        if (!image.is_object())
            m_notes.add(scNoteFailed, "written without its texture, an image that the scene does not have");
        else if (Expected<void> const used = use_image(index, image); !used)
            note_missing(name_image(index), used.error());
        leave_out_others(image, " of its image", {"name", "uri", "mimeType", "bufferView"});
        leave_out_layout(use, texture);
    }

    void note_missing(std::string const& name, std::string const& reason)
    {
        if (name.empty())
            m_notes.add(scNoteFailed, "written without its texture: %1", reason);
        else
            m_notes.add(scNoteFailed, "written without its texture \"%1\": %2", name, reason);
    }

    /// Makes the image the material's texture.
    Expected<void> use_image(Json const& index, Json const& image)
    {
        std::string const uri = read_string(image, "uri", " of its image");
        if (!is_path(get_member(image, "uri")))
            return embed(index, image);
        if (uri.empty())
            return because("its URI is empty");
        m_to.texture = uri;
        return {};
    }

    /// Makes an image that stands in the scene's files the material's texture.
    Expected<void> embed(Json const& index, Json const& image)
    {
        Json const& uri = get_member(image, "uri");
        std::optional<ByteRange> const range = uri.is_string()
                                                   ? ByteRange{data_uris, index.get<std::size_t>(), 0}
                                                   : m_file.find_view(get_member(image, "bufferView"));
        if (!range)
            return because("the file has no bytes for it");
        if (auto const known = m_images.find(*range); known != m_images.end()) {
            m_to.embedded = known->second;
            return {};
        }
        Expected<std::string> bytes =
            uri.is_string() ? decode_data_uri(uri.get_ref<std::string const&>()) : m_file.read_bytes(*range);
        if (!bytes)
            return because(bytes.error());
        m_to.embedded = m_images.emplace(*range, m_scene.images.size()).first->second;
        std::string const kind = read_string(image, "mimeType", " of its image");
        m_scene.images.push_back(
            {name_image(index), kind.substr(kind.find('/') + 1), 0, 0, std::move(*bytes)});
        return {};
    }

    void leave_out_layout(Json const& use, Json const& texture)
    {
        Json const& sampler = get_entry(m_file.json(), "samplers", get_member(texture, "sampler"));
        if (!sampler.is_object() && !get_member(texture, "sampler").is_null())
            fail("sampler");
        for (char const* wrapping : {"wrapS", "wrapT"})
            if (read_number(sampler, wrapping, repeating) != repeating)
                leave_out("the texture's clamping or mirroring");
        for (char const* filter : {"magFilter", "minFilter"}) {
            double const kind = read_number(sampler, filter, 0);
            if (std::find(std::begin(nearest_filters), std::end(nearest_filters), kind) !=
                std::end(nearest_filters))
                leave_out("the texture's filter");
        }
        Json const& transform = get_extension(use, texture_transform);
        if (read_number(transform, "texCoord", read_number(use, "texCoord", 0)) != 0)
            leave_out("the texture's choice of a further set of coordinates");
        using Pair = std::array<double, 2>;
        if (read_numbers<2>(transform, "offset", {0, 0}) != Pair{0, 0} ||
            read_number(transform, "rotation", 0) != 0 ||
            read_numbers<2>(transform, "scale", {1, 1}) != Pair{1, 1})
            leave_out("the texture's scale, shift or turn");
        leave_out_others(use, " of its use of the texture", {"index", "texCoord"}, {texture_transform});
        leave_out_others(transform, ut_concat(" of its ", texture_transform),
                         {"offset", "rotation", "scale", "texCoord"});
        leave_out_others(texture, " of its texture", {"name", "sampler", "source"},
                         list_image_formats(texture));
        leave_out_others(sampler, " of its texture's sampler",
                         {"name", "wrapS", "wrapT", "magFilter", "minFilter"});
    }

    /// The extensions that stand for the texture's image in a further format.
    Names list_image_formats(Json const& texture)
    {
        Names formats;
        for (auto const& [name, value] : get_object(texture, "extensions").items())
            if (!get_member(value, "source").is_null())
                formats.push_back(name);
        return formats;
    }

    GltfFile& m_file;
    KnownImages& m_images;
    scScene& m_scene;
    scMaterial m_to;
    NoteList m_notes;
};

/// Finds the materials whose surfaces have coloured vertices.
std::vector<bool> find_coloured(Json const& file, std::size_t materials)
{
    std::vector<bool> coloured(materials, false);
    for (Json const& mesh : get_member(file, "meshes"))
        for (Json const& part : get_member(mesh, "primitives")) {
            Json const& material = get_member(part, "material");
            bool const known = material.is_number_unsigned() && material.get<std::size_t>() < materials;
            if (known && !get_member(get_member(part, "attributes"), "COLOR_0").is_null())
                coloured[material.get<std::size_t>()] = true;
        }
    return coloured;
}

/// Notes which extensions of the file as a whole are left out that speak of materials.
void leave_out_extensions(Json const& file, scScene& scene)
{
    Json const& extensions = get_member(file, "extensions");
    if (!extensions.is_object())
        return;
    for (auto const& [name, value] : extensions.items())
        if (name.find("material") != name.npos || name.find("texture") != name.npos)
            scene.notes.push_back(
                make_note(scNoteLeftOut, "the extension %1 of the file: not carried over", name));
}

constexpr std::string_view binary_version_1("glTF\1\0\0\0", 8);

} // namespace

bool is_gltf_1(std::string const& path)
{
    if (!is_gltf(path))
        return false;
    if (gx_read_beginning(path).starts_with(binary_version_1))
        return true;
    GltfFile file(path);
    return file.read() && is_version_1(file.json());
}

Expected<scScene> read_gltf(std::string const& path)
{
    if (gx_read_beginning(path).starts_with(binary_version_1))
        return read_with_assimp(path);
    GltfFile file(path);
    if (Expected<void> const read = file.read(); !read)
        return because(read.error());
    if (is_version_1(file.json()))
        return read_with_assimp(path);
    Json const& version = get_member(get_member(file.json(), "asset"), "version");
    if (!version.is_string())
        return because("no glTF version in it");
    Json const& materials = get_member(file.json(), "materials");
    if (!materials.is_array() && !materials.is_null())
        return because("its materials are no list");
    scScene scene;
    KnownImages images;
    std::vector<bool> const coloured = find_coloured(file.json(), materials.size());
    for (Json const& material : materials)
        scene.materials.push_back(
            GltfMaterialReader(file, images, scene).read(material, coloured[scene.materials.size()]));
    scene.notes = file.notes();
    leave_out_extensions(file.json(), scene);
    return scene;
}

} // namespace sc
