#include "gltfMaterials.h"

#include "fileKind.h"

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>

namespace mrtool {

namespace {

// A GLB file: magic, version, length; then the length, the kind and the bytes of its JSON.
constexpr std::size_t glb_length_at = 12;
constexpr std::size_t glb_json_at = 20;

/// The JSON of a file of either kind, or what is no JSON.
std::string json_of(std::string const& path)
{
    std::ifstream in(path, std::ios::binary);
    std::string const file(std::istreambuf_iterator<char>(in), {});
    if (!file.starts_with("glTF"))
        return file;
    std::size_t length = 0;
    for (std::size_t at = 4; at-- > 0 && file.size() >= glb_json_at;)
        length = length << 8 | static_cast<unsigned char>(file[glb_length_at + at]);
    return file.size() < glb_json_at ? std::string() : file.substr(glb_json_at, length);
}

} // namespace

std::optional<std::vector<std::string>> gltf_material_names(std::string const& path)
{
    using Json = nlohmann::json;
    std::string const extension = extension_of(path);
    if (extension != "gltf" && extension != "glb")
        return std::nullopt;
    Json const file = Json::parse(json_of(path), nullptr, false);
    std::vector<std::string> names;
    if (!file.is_object() || !file.contains("materials") || !file["materials"].is_array())
        return names;
    for (Json const& material : file["materials"]) {
        bool const named = material.is_object() && material.contains("name") && material["name"].is_string();
        names.push_back(named ? material["name"].get<std::string>() : std::string());
    }
    return names;
}

} // namespace mrtool
