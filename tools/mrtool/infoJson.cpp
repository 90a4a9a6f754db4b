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

char const* kind(MaterialContents const&)
{
    return "material";
}

char const* kind(PaletteFile const&)
{
    return "palette";
}

char const* kind(CacheContents const&)
{
    return "image_cache";
}

void add_contents(Json& file, MaterialContents const& contents)
{
    mrFileMat const& material = contents.material;
    file["encapsulation"] = json_word(contents.encapsulation);
    file["properties"] = json(material.file_props());
    file["facets"] = Json::array();
    for (mrFMFacet const* facet : material.facets())
        file["facets"].push_back(json(*facet, material));
    file["images"] = Json::array();
    for (auto const& [title, image] : material.images())
        file["images"].push_back({{"title", json(title)},
                                  {"name", as_utf8(image->name())},
                                  {"width", image->width()},
                                  {"height", image->height()}});
}

Json json_colour(mrColourPalette const& palette, int index)
{
    utString name;
    giColour const& colour = palette.colour(index, name);
    doublecoDList values;
    palette.colour_components(index, values);
    Json components = Json::array();
    for (double const value : values)
        components.push_back(static_cast<int>(value)); // what a file has are whole numbers
    return {{"index", index},
            {"rgb", json(colour)},
            {"encoding", keyword(palette.colour_encoding(index))},
            {"components", components},
            {"name", json(name)}};
}

void add_contents(Json& file, PaletteFile const& contents)
{
    file["colours"] = Json::array();
    for (int index = 0; index < contents.palette.size(); ++index)
        file["colours"].push_back(json_colour(contents.palette, index));
}

void add_contents(Json& file, CacheContents const& contents)
{
    file["max_cache_size"] = contents.max_cache_size;
    file["shrinkage"] = contents.shrinkage;
    file["entries"] = Json::array();
    for (CacheEntry const& entry : contents.entries)
        file["entries"].push_back({{"hash", entry.hash},
                                   {"age", entry.age},
                                   {"last_used", local_time(entry.age)},
                                   {"image_name", as_utf8(entry.image_name)},
                                   {"width", entry.width},
                                   {"height", entry.height}});
}

void add_fault(Json& file, ReadOutcome const& outcome)
{
    file["fault"] = as_utf8(outcome.fault);
    if (outcome.line > 0)
        file["line"] = outcome.line;
}

Json json(FileInfo const& info)
{
    ReadOutcome const& outcome = info.outcome;
    Json file{{"path", as_utf8(info.path)}};
    file["kind"] = std::visit([](auto const& contents) { return kind(contents); }, info.contents);
    file["status"] = word(outcome.status);
    if (!outcome.read()) {
        add_fault(file, outcome);
        return file;
    }
    std::visit([&](auto const& contents) { add_contents(file, contents); }, info.contents);
    file["warnings"] = Json::array();
    for (std::string const& warning : outcome.warnings)
        file["warnings"].push_back(as_utf8(warning));
    return file;
}

} // namespace

std::string info_json(FileInfo const& info)
{
    return json(info).dump(2);
}

} // namespace mrtool
