// The contents of a file for a program.
#include "fileInfo.h"

#include "jsonText.h"
#include "messages.h"
#include "utUTF8.h"

#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include "dgDuctImage.h"

namespace mrtool {

namespace {

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

void add(JsonText& json, utString const& text)
{
    if (text.invalid())
        json.null();
    else
        json.string(utUTF8::from_any(text.view()));
}

template <class Enum>
void add_word(JsonText& json, Enum value)
{
    utString text;
    mrTypes::print(value, text);
    add(json, text);
}

void add(JsonText& json, giColour const& colour)
{
    json.array([&] {
        for (int const component : {colour.red(), colour.green(), colour.blue()})
            json.integer(component);
    });
}

void add_value(JsonText& json, mrMatProp const& property)
{
    switch (property.prop_type()) {
    case mrMatPropString:
        return add(json, property.string_value());
    case mrMatPropInteger:
        return json.integer(property.integer_value());
    default:
        return json.real(property.double_value());
    }
}

void add(JsonText& json, mrMatPropcoSet const& properties)
{
    json.array([&] {
        for (mrMatProp const& property : properties)
            json.object([&] {
                add(json.key("name"), property.name());
                add_word(json.key("type"), property.prop_type());
                add_value(json.key("value"), property);
            });
    });
}

void add(JsonText& json, mrFMPlainMat const& plain)
{
    json.object([&] {
        add(json.key("name"), plain.name());
        add(json.key("properties"), plain.properties());
        json.key("affinity").integer(plain.affinity());
        add(json.key("diffuse_colour"), plain.diffuse_colour());
        json.key("polish").real(plain.polish());
        json.key("reflect").real(plain.reflect());
        json.key("transparency").real(plain.transparency());
        json.key("emission").real(plain.emission());
        json.key("refractive_index").real(plain.refractive_index());
        add(json.key("shader_definition"), plain.shader_definition());
    });
}

void add_size(JsonText& json, int width, int height)
{
    json.key("width").integer(width);
    json.key("height").integer(height);
}

void add_size(JsonText& json, dgDuctImage const* image)
{
    if (image)
        json.object([&] { add_size(json, image->width(), image->height()); });
    else
        json.null();
}

void add(JsonText& json, mrFMTexture const& layer, mrFileMat const& material)
{
    json.object([&] {
        add(json.key("image_name"), layer.image_name());
        add_word(json.key("layer_type"), layer.layer_type());
        json.key("recoloured").boolean(layer.recoloured() != 0);
        add(json.key("recolour"), layer.recolour());
        add_size(json.key("image"), material.images().read(layer.image_name()));
    });
}

void add(JsonText& json, mrFMFacet const& facet, mrFileMat const& material)
{
    json.object([&] {
        add(json.key("plain_material"), facet.plain_mat());
        json.key("textures").array([&] {
            for (mrFMTexture const& layer : facet.textures())
                add(json, layer, material);
        });
    });
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

void add_contents(JsonText& json, MaterialContents const& contents)
{
    mrFileMat const& material = contents.material;
    add_word(json.key("encapsulation"), contents.encapsulation);
    add(json.key("properties"), material.file_props());
    json.key("facets").array([&] {
        for (mrFMFacet const* facet : material.facets())
            add(json, *facet, material);
    });
    json.key("images").array([&] {
        for (auto const& [title, image] : material.images())
            json.object([&, &title = title, &image = image] {
                add(json.key("title"), title);
                json.key("name").string(utUTF8::from_any(image->name()));
                add_size(json, image->width(), image->height());
            });
    });
}

void add_colour(JsonText& json, mrColourPalette const& palette, int index)
{
    utString name;
    giColour const& colour = palette.colour(index, name);
    doublecoDList values;
    palette.colour_components(index, values);
    json.object([&] {
        json.key("index").integer(index);
        add(json.key("rgb"), colour);
        json.key("encoding").string(keyword(palette.colour_encoding(index)));
        json.key("components").array([&] {
            for (double const value : values)
                json.integer(static_cast<int>(value)); // what a file has are whole numbers
        });
        add(json.key("name"), name);
    });
}

void add_contents(JsonText& json, PaletteFile const& contents)
{
    json.key("colours").array([&] {
        for (int index = 0; index < contents.palette.size(); ++index)
            add_colour(json, contents.palette, index);
    });
}

void add_contents(JsonText& json, CacheContents const& contents)
{
    json.key("max_cache_size").integer(contents.max_cache_size);
    json.key("shrinkage").integer(contents.shrinkage);
    json.key("entries").array([&] {
        for (CacheEntry const& entry : contents.entries)
            json.object([&] {
                json.key("hash").integer(entry.hash);
                json.key("age").integer(entry.age);
                json.key("last_used").string(local_time(entry.age));
                json.key("image_name").string(utUTF8::from_any(entry.image_name));
                add_size(json, entry.width, entry.height);
            });
    });
}

void add_fault(JsonText& json, ReadOutcome const& outcome)
{
    json.key("fault").string(utUTF8::from_any(outcome.fault));
    if (outcome.line > 0)
        json.key("line").integer(outcome.line);
}

void add_members(JsonText& json, FileInfo const& info)
{
    ReadOutcome const& outcome = info.outcome;
    json.key("path").string(utUTF8::from_any(info.path));
    json.key("kind").string(std::visit([](auto const& contents) { return kind(contents); }, info.contents));
    json.key("status").string(word(outcome.status));
    if (!outcome.read())
        return add_fault(json, outcome);
    std::visit([&](auto const& contents) { add_contents(json, contents); }, info.contents);
    json.key("warnings").array([&] {
        for (std::string const& warning : outcome.warnings)
            json.string(utUTF8::from_any(warning));
    });
}

} // namespace

std::string info_json(FileInfo const& info)
{
    JsonText json;
    json.object([&] { add_members(json, info); });
    return json.take();
}

} // namespace mrtool
