#include "glbFile.h"

#include "sampleFile.h"

#include <algorithm>
#include <cmath>

namespace {

// ---- JSON

std::string quoted(std::string const& text)
{
    return '"' + text + '"';
}

template <class Values, class Print>
std::string json_array(Values const& values, Print const& print)
{
    std::string text = "[";
    for (auto const& value : values) {
        if (text.size() > 1)
            text += ',';
        text += print(value);
    }
    text += ']';
    return text;
}

template <class Numbers>
std::string json_numbers(Numbers const& numbers)
{
    // Enough decimals for the multiples of 1/16384 that places are rounded to.
    return json_array(numbers, [](double number) { return decimal(number, 14); });
}

// ---- The binary part, and what in it is what

constexpr int array_buffer = 34962;
constexpr int element_array_buffer = 34963;
constexpr int component_float = 5126;
constexpr int component_unsigned_short = 5123;

/// Rounded so that the same place comes out on every machine, and prints in full.
double rounded(double value, double grid)
{
    return std::floor(value * grid + 0.5) / grid;
}

/// The colour as glTF has it, proportional to light; what follows red, green and blue stays. The curve of
/// IEC 61966-2-1, with enough decimals for every byte to come back.
template <class Colour>
Colour make_linear(Colour colour)
{
    for (std::size_t at = 0; at < 3; ++at) {
        double const each = colour[at];
        colour[at] = rounded(each > 0.04045 ? std::pow((each + 0.055) / 1.055, 2.4) : each / 12.92, 100'000);
    }
    return colour;
}

class GlbWriter
{
public:
    void add(GlbImage const& image)
    {
        m_images.push_back("{\"name\":" + quoted(image.name) + ",\"mimeType\":\"image/png\",\"bufferView\":" +
                           std::to_string(add_view(image.png, 0)) + '}');
        m_textures.push_back("{\"sampler\":0,\"source\":" + std::to_string(m_textures.size()) + '}');
    }

    void add(GlbMaterial const& material)
    {
        std::string json = "{\"name\":" + quoted(material.name) +
                           ",\"pbrMetallicRoughness\":{\"baseColorFactor\":" +
                           json_numbers(make_linear(material.base_colour)) +
                           ",\"metallicFactor\":" + decimal(material.metallic, 3) +
                           ",\"roughnessFactor\":" + decimal(material.roughness, 3);
        if (material.image >= 0)
            json += ",\"baseColorTexture\":{\"index\":" + std::to_string(material.image) + '}';
        json += '}';
        if (*std::max_element(material.emission.begin(), material.emission.end()) > 0)
            json += ",\"emissiveFactor\":" + json_numbers(make_linear(material.emission));
        if (material.base_colour[3] < 1)
            json += ",\"alphaMode\":\"BLEND\"";
        if (material.double_sided)
            json += ",\"doubleSided\":true";
        m_materials.push_back(json + '}');
    }

    void add(GlbPart const& part, bool textured)
    {
        std::string attributes = "\"POSITION\":" + std::to_string(add_places(part.mesh));
        attributes += ",\"NORMAL\":" + std::to_string(add_normals(part.mesh));
        if (textured)
            attributes += ",\"TEXCOORD_0\":" + std::to_string(add_tus(part.mesh));
        std::string const indices = std::to_string(add_indices(part.mesh));
        m_nodes.push_back("{\"name\":" + quoted(part.name) + ",\"mesh\":" + std::to_string(m_meshes.size()) +
                          '}');
        m_meshes.push_back("{\"name\":" + quoted(part.name) + ",\"primitives\":[{\"attributes\":{" +
                           attributes + "},\"indices\":" + indices +
                           ",\"material\":" + std::to_string(part.material) + "}]}");
    }

    std::string bytes() const
    {
        std::string const document = padded(json(), ' ');
        std::string const binary = padded(m_binary, '\0');
        std::string bytes = "glTF";
        append_bytes(bytes, 2, 4);
        append_bytes(bytes, static_cast<unsigned>(12 + 8 + document.size() + 8 + binary.size()), 4);
        append_chunk(bytes, "JSON", document);
        append_chunk(bytes, std::string("BIN\0", 4), binary);
        return bytes;
    }

private:
    static std::string padded(std::string text, char with)
    {
        while (text.size() % 4 != 0)
            text += with;
        return text;
    }

    static void append_chunk(std::string& bytes, std::string const& type, std::string const& content)
    {
        append_bytes(bytes, static_cast<unsigned>(content.size()), 4);
        bytes += type + content;
    }

    /// @param target  what the view is bound to, or 0
    int add_view(std::string const& content, int target)
    {
        m_binary = padded(m_binary, '\0');
        m_views.push_back("{\"buffer\":0,\"byteOffset\":" + std::to_string(m_binary.size()) +
                          ",\"byteLength\":" + std::to_string(content.size()) +
                          (target == 0 ? "" : ",\"target\":" + std::to_string(target)) + '}');
        m_binary += content;
        return static_cast<int>(m_views.size()) - 1;
    }

    int add_accessor(std::string const& content, int target, int component, std::size_t count,
                     std::string const& type, std::string const& more = "")
    {
        m_accessors.push_back("{\"bufferView\":" + std::to_string(add_view(content, target)) +
                              ",\"componentType\":" + std::to_string(component) + ",\"count\":" +
                              std::to_string(count) + ",\"type\":" + quoted(type) + more + '}');
        return static_cast<int>(m_accessors.size()) - 1;
    }

    int add_places(Mesh const& mesh)
    {
        std::string content;
        std::array<double, 3> low{1e9, 1e9, 1e9};
        std::array<double, 3> high{-1e9, -1e9, -1e9};
        for (MeshPoint const& point : mesh.points) {
            std::array<double, 3> const place{point.place.x, point.place.y, point.place.z};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                double const metres = rounded(place[axis] / 100, 16384);
                low[axis] = std::min(low[axis], metres);
                high[axis] = std::max(high[axis], metres);
                append_float(content, metres);
            }
        }
        return add_accessor(content, array_buffer, component_float, mesh.points.size(), "VEC3",
                            ",\"min\":" + json_numbers(low) + ",\"max\":" + json_numbers(high));
    }

    int add_normals(Mesh const& mesh)
    {
        std::string content;
        for (MeshPoint const& point : mesh.points) {
            // Rounded before it is made of length 1, which only takes operations that are exact everywhere.
            giVector3 normal{rounded(point.normal.x, 4096), rounded(point.normal.y, 4096),
                             rounded(point.normal.z, 4096)};
            normal.unitize();
            for (double component : {normal.x, normal.y, normal.z})
                append_float(content, component);
        }
        return add_accessor(content, array_buffer, component_float, mesh.points.size(), "VEC3");
    }

    int add_tus(Mesh const& mesh)
    {
        std::string content;
        for (MeshPoint const& point : mesh.points) {
            append_float(content, rounded(point.tu.x, 4096));
            append_float(content, rounded(1 - point.tu.y, 4096)); // counted from the top in glTF
        }
        return add_accessor(content, array_buffer, component_float, mesh.points.size(), "VEC2");
    }

    int add_indices(Mesh const& mesh)
    {
        std::string content;
        for (Mesh::Face const& face : mesh.faces) {
            append_triangle(content, face[0], face[1], face[2]);
            if (face[3] >= 0)
                append_triangle(content, face[0], face[2], face[3]);
        }
        return add_accessor(content, element_array_buffer, component_unsigned_short, content.size() / 2,
                            "SCALAR");
    }

    static void append_triangle(std::string& content, int a, int b, int c)
    {
        for (int index : {a, b, c})
            append_bytes(content, static_cast<unsigned>(index), 2);
    }

    std::string json() const
    {
        auto const list = [](std::string const& name, std::vector<std::string> const& entries) {
            return quoted(name) + ':' + json_array(entries, [](std::string const& entry) { return entry; });
        };
        std::vector<std::string> scene_nodes;
        for (std::size_t node = 0; node < m_nodes.size(); ++node)
            scene_nodes.push_back(std::to_string(node));
        return "{\"asset\":{\"version\":\"2.0\",\"generator\":\"mr_make_samples\"},\"scene\":0,"
               "\"scenes\":[{" +
               list("nodes", scene_nodes) + "}]," + list("nodes", m_nodes) + ',' + list("meshes", m_meshes) +
               ',' + list("materials", m_materials) + ',' + list("textures", m_textures) +
               ",\"samplers\":[{\"magFilter\":9729,\"minFilter\":9987}]," + list("images", m_images) + ',' +
               list("accessors", m_accessors) + ',' + list("bufferViews", m_views) +
               ",\"buffers\":[{\"byteLength\":" + std::to_string(m_binary.size()) + "}]}";
    }

    std::string m_binary;
    std::vector<std::string> m_views;
    std::vector<std::string> m_accessors;
    std::vector<std::string> m_images;
    std::vector<std::string> m_textures;
    std::vector<std::string> m_materials;
    std::vector<std::string> m_meshes;
    std::vector<std::string> m_nodes;
};

} // namespace

std::string glb_bytes(std::vector<GlbImage> const& images, std::vector<GlbMaterial> const& materials,
                      std::vector<GlbPart> const& parts)
{
    GlbWriter writer;
    for (GlbImage const& image : images)
        writer.add(image);
    for (GlbMaterial const& material : materials)
        writer.add(material);
    for (GlbPart const& part : parts)
        writer.add(part, materials[static_cast<std::size_t>(part.material)].image >= 0);
    return writer.bytes();
}
