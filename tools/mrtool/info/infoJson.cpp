// The contents of a file as JSON.
#include "fileInfo.h"

#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrUtils.h"

#include "dgDuctImage.h"
#include "utUTF8.h"

#include <nlohmann/json.hpp>

namespace mrtool {

namespace {

using Json = nlohmann::ordered_json;

/// Values at this depth and deeper stand on one line.
constexpr int one_line_depth = 2;

/// Appends a value. The JSON library uses one line for all or one for each number; this keeps a colour on one line.
void append(std::string& text, Json const& value, int depth)
{
    if (!value.is_structured() || value.empty()) {
        text += value.dump();
        return;
    }
    bool const lines = depth < one_line_depth;
    auto const begin_line = [&](int indent) {
        text += '\n' + std::string(2 * static_cast<std::size_t>(indent), ' ');
    };
    text += value.is_object() ? '{' : '[';
    bool first = true;
    for (auto const& [key, member] : value.items()) {
        if (!first)
            text += lines ? "," : ", ";
        first = false;
        if (lines)
            begin_line(depth + 1);
        if (value.is_object())
            text += Json(key).dump() + ": ";
        append(text, member, depth + 1);
    }
    if (lines)
        begin_line(depth);
    text += value.is_object() ? '}' : ']';
}

Json make_string(std::string_view text)
{
    return utUTF8::from_any(text);
}

Json make_string(utString const& text)
{
    return text.invalid() ? Json() : make_string(text.view());
}

template <class Enum>
Json make_word(Enum value)
{
    return make_string(mrTypes::find_word(value));
}

Json make_colour(giColour const& colour)
{
    return {colour.red(), colour.green(), colour.blue()};
}

Json make_value(mrMatProp const& property)
{
    switch (property.prop_type()) {
    case mrMatPropString:
        return make_string(property.string_value());
    case mrMatPropInteger:
        return property.integer_value();
    default:
        return property.double_value();
    }
}

Json make_properties(mrMatPropcoSet const& properties)
{
    Json list = Json::array();
    for (mrMatProp const& property : properties)
        list.push_back({{"name", make_string(property.name())},
                        {"type", make_word(property.prop_type())},
                        {"value", make_value(property)}});
    return list;
}

Json make_plain_material(mrFMPlainMat const& plain)
{
    return {{"name", make_string(plain.name())},
            {"properties", make_properties(plain.properties())},
            {"affinity", plain.affinity()},
            {"diffuse_colour", make_colour(plain.diffuse_colour())},
            {"polish", plain.polish()},
            {"reflect", plain.reflect()},
            {"transparency", plain.transparency()},
            {"emission", plain.emission()},
            {"refractive_index", plain.refractive_index()},
            {"shader_definition", make_string(plain.shader_definition())}};
}

Json make_layer(mrFMTexture const& layer, mrFileMat const& material)
{
    dgDuctImage const* const image = material.images().read(layer.image_name());
    return {{"image_name", make_string(layer.image_name())},
            {"layer_type", make_word(layer.layer_type())},
            {"recoloured", layer.recoloured() != 0},
            {"recolour", make_colour(layer.recolour())},
            {"image", image ? Json{{"width", image->width()}, {"height", image->height()}} : Json()}};
}

Json make_facets(mrFileMat const& material)
{
    Json facets = Json::array();
    for (mrFMFacet const* facet : material.facets()) {
        Json layers = Json::array();
        for (mrFMTexture const& layer : facet->textures())
            layers.push_back(make_layer(layer, material));
        facets.push_back({{"plain_material", make_plain_material(facet->plain_mat())}, {"textures", layers}});
    }
    return facets;
}

void add_contents(Json& json, mrFileMat const& material)
{
    json["encapsulation"] = make_word(material.encapsulation());
    json["properties"] = make_properties(material.file_props());
    json["facets"] = make_facets(material);
    Json& images = json["images"] = Json::array();
    for (auto const& [title, image] : material.images())
        images.push_back({{"title", make_string(title)},
                          {"name", make_string(std::string_view(image->name()))},
                          {"width", image->width()},
                          {"height", image->height()}});
}

void add_contents(Json& json, mrColourPalette const& palette)
{
    Json& colours = json["colours"] = Json::array();
    for (int index = 0; index < palette.size(); ++index) {
        utString name;
        giColour const& colour = palette.colour(index, name);
        doublecoDList values;
        palette.colour_components(index, values);
        Json components = Json::array();
        for (double const value : values)
            components.push_back(static_cast<int>(value)); // files hold whole numbers
        colours.push_back({{"index", index},
                           {"rgb", make_colour(colour)},
                           {"encoding", mrUtils::find_palette_keyword(palette.colour_encoding(index))},
                           {"components", components},
                           {"name", make_string(name)}});
    }
}

void add_contents(Json& json, CacheContents const& contents)
{
    json["max_cache_size"] = contents.max_cache_size;
    json["shrinkage"] = contents.shrinkage;
    Json& entries = json["entries"] = Json::array();
    for (CacheContents::Entry const& entry : contents.entries)
        entries.push_back({{"hash", entry.hash},
                           {"age", entry.age},
                           {"last_used", format_age(entry.age)},
                           {"image_name", make_string(entry.image_name)},
                           {"width", entry.width},
                           {"height", entry.height}});
}

} // namespace

std::string make_json(FileInfo const& info)
{
    // In the order of FileInfo::contents and of mrFileMatReadStatus.
    constexpr char const* kinds[] = {"material", "palette", "image_cache"};
    constexpr char const* statuses[] = {"open_failed", "ok", "no_document", "bad_content"};
    Json json;
    json["path"] = make_string(info.path);
    json["kind"] = kinds[info.contents.index()];
    json["status"] = statuses[info.status];
    if (info.is_read()) {
        std::visit([&](auto const& contents) { add_contents(json, contents); }, info.contents);
        Json& warnings = json["warnings"] = Json::array();
        for (std::string const& warning : info.warnings)
            warnings.push_back(make_string(warning));
    } else {
        json["fault"] = make_string(info.fault.words);
        if (info.fault.line > 0)
            json["line"] = info.fault.line;
    }
    std::string text;
    append(text, json, 0);
    return text;
}

} // namespace mrtool
