// The contents of a file for a program.
#include "fileInfo.h"
#include "messages.h"

#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include "dgDuctImage.h"

#include <nlohmann/json.hpp>

namespace mrtool {

namespace {

using Json = nlohmann::ordered_json;

char const* word(mrFileMatReadStatus status)
{
    switch (status) {
    case mrFileMatReadOK:
        return "ok";
    case mrFileMatOpenFailed:
        return "open_failed";
    case mrFileMatNoDocument:
        return "no_document";
    default:
        return "bad_content";
    }
}

Json json(utString const& text)
{
    return text.invalid() ? Json() : Json(as_utf8(text.view()));
}

template <class Enum>
Json json_word(Enum value)
{
    utString text;
    mrTypes::print(value, text);
    return json(text);
}

Json json(giColour const& colour)
{
    return Json::array({colour.red(), colour.green(), colour.blue()});
}

Json json_value(mrMatProp const& property)
{
    switch (property.prop_type()) {
    case mrMatPropString:
        return json(property.string_value());
    case mrMatPropInteger:
        return property.integer_value();
    default:
        return property.double_value(); // null when it is no finite number, which JSON has no word for
    }
}

Json json(mrMatPropcoSet const& properties)
{
    Json list = Json::array();
    for (mrMatProp const& property : properties)
        list.push_back({{"name", json(property.name())},
                        {"type", json_word(property.prop_type())},
                        {"value", json_value(property)}});
    return list;
}

Json json(mrFMPlainMat const& plain)
{
    return {{"name", json(plain.name())},
            {"properties", json(plain.properties())},
            {"affinity", plain.affinity()},
            {"diffuse_colour", json(plain.diffuse_colour())},
            {"polish", plain.polish()},
            {"reflect", plain.reflect()},
            {"transparency", plain.transparency()},
            {"emission", plain.emission()},
            {"refractive_index", plain.refractive_index()},
            {"shader_definition", json(plain.shader_definition())}};
}

Json json_size(dgDuctImage const* image)
{
    return image ? Json{{"width", image->width()}, {"height", image->height()}} : Json();
}

Json json(mrFMTexture const& layer, mrFileMat const& material)
{
    return {{"image_name", json(layer.image_name())},
            {"layer_type", json_word(layer.layer_type())},
            {"recoloured", layer.recoloured() != 0},
            {"recolour", json(layer.recolour())},
            {"image", json_size(material.images().read(layer.image_name()))}};
}

Json json(mrFMFacet const& facet, mrFileMat const& material)
{
    Json layers = Json::array();
    for (mrFMTexture const& layer : facet.textures())
        layers.push_back(json(layer, material));
    return {{"plain_material", json(facet.plain_mat())}, {"textures", layers}};
}

void add_contents(Json& file, FileInfo const& info)
{
    file["encapsulation"] = json_word(info.encapsulation);
    file["properties"] = json(info.material.file_props());
    file["facets"] = Json::array();
    for (mrFMFacet const* facet : info.material.facets())
        file["facets"].push_back(json(*facet, info.material));
    file["images"] = Json::array();
    for (auto const& [title, image] : info.material.images())
        file["images"].push_back({{"title", json(title)},
                                  {"name", as_utf8(image->name())},
                                  {"width", image->width()},
                                  {"height", image->height()}});
    file["warnings"] = Json::array();
    for (std::string const& warning : info.warnings)
        file["warnings"].push_back(as_utf8(warning));
}

Json json(FileInfo const& info)
{
    Json file{{"path", as_utf8(info.path)}, {"kind", "material"}, {"status", word(info.status)}};
    if (info.status == mrFileMatReadOK)
        add_contents(file, info);
    else
        file["fault"] = as_utf8(info.fault);
    return file;
}

} // namespace

std::string info_json(FileInfo const& info)
{
    return json(info).dump(2);
}

} // namespace mrtool
