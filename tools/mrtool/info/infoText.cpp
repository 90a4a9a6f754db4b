// The contents of a file as text.
#include "fileInfo.h"
#include "printable.h"
#include "utConcat.h"
#include "utUTF8.h"

#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrUtils.h"

#include "dgDuctImage.h"

#include <cstdio>

namespace mrtool {

namespace {

constexpr std::size_t longest_text = 400;

/// Puts a text in quotes, a very long one cut.
std::string quote(utString const& value)
{
    std::string const whole = utUTF8::from_any(value.view());
    if (whole.size() <= longest_text)
        return make_printable(ut_quote(whole));
    return ut_concat(make_printable(ut_quote(utUTF8::cut(whole, longest_text))), " and so on, ",
                     value.length(), " bytes");
}

std::string format_colour(giColour const& colour)
{
    return ut_concat(int{colour.red()}, " ", int{colour.green()}, " ", int{colour.blue()});
}

std::string format_size(int width, int height)
{
    return ut_concat(width, " x ", height);
}

std::string format_value(mrMatProp const& property)
{
    switch (property.prop_type()) {
    case mrMatPropString:
        return quote(property.string_value());
    case mrMatPropInteger:
        return ut_concat(property.integer_value());
    default:
        return ut_concat(property.double_value());
    }
}

/// Lines of a name and a value, the values in a column.
class Listing
{
public:
    void add_line(int indent, std::string const& name, std::string const& value = {})
    {
        constexpr std::size_t column = 26;
        std::string line = std::string(static_cast<std::size_t>(indent) * 2, ' ') + name;
        if (!value.empty())
            line += std::string(line.size() < column ? column - line.size() : 1, ' ') + value;
        m_text += line + "\n";
    }

    void add_properties(int indent, mrMatPropcoSet const& properties)
    {
        for (mrMatProp const& property : properties)
            add_line(indent, "property " + quote(property.name()),
                     ut_concat(format_value(property), " (", mrTypes::find_word(property.prop_type()), ")"));
    }

    std::string const& text() const { return m_text; }

private:
    std::string m_text;
};

void list_plain_material(Listing& listing, mrFMPlainMat const& plain)
{
    listing.add_line(2, "name", quote(plain.name()));
    listing.add_properties(2, plain.properties());
    listing.add_line(2, "affinity", ut_concat(plain.affinity()));
    listing.add_line(2, "diffuse colour", format_colour(plain.diffuse_colour()));
    listing.add_line(2, "polish", ut_concat(plain.polish()));
    listing.add_line(2, "reflect", ut_concat(plain.reflect()));
    listing.add_line(2, "transparency", ut_concat(plain.transparency()));
    listing.add_line(2, "emission", ut_concat(plain.emission()));
    listing.add_line(2, "refractive index", ut_concat(plain.refractive_index()));
    bool const shaded = !plain.shader_definition().invalid();
    listing.add_line(2, "shader definition", shaded ? quote(plain.shader_definition()) : "none");
}

void list_layer(Listing& listing, int number, mrFMTexture const& layer, mrFileMat const& material)
{
    dgDuctImage const* const image = material.images().read(layer.image_name());
    std::string const tint =
        layer.recoloured() ? "tinted towards " + format_colour(layer.recolour()) : "not tinted";
    listing.add_line(2, ut_concat("layer ", number),
                     ut_concat(quote(layer.image_name()), ", ", mrTypes::find_word(layer.layer_type()), ", ",
                               image ? format_size(image->width(), image->height()) : "no such image", ", ",
                               tint));
}

void list(Listing& listing, mrFileMat const& material)
{
    listing.add_line(1, "encapsulation", mrTypes::find_word(material.encapsulation()).c_str());
    listing.add_properties(1, material.file_props());
    int facet_number = 0;
    for (mrFMFacet const* facet : material.facets()) {
        listing.add_line(1, ut_concat("facet ", ++facet_number));
        list_plain_material(listing, facet->plain_mat());
        int layer_number = 0;
        for (mrFMTexture const& layer : facet->textures())
            list_layer(listing, ++layer_number, layer, material);
    }
    for (auto const& [title, image] : material.images())
        listing.add_line(1, "image " + quote(title),
                         format_size(image->width(), image->height()) + ", named " + quote(image->name()));
}

std::string describe_colour(mrColourPalette const& palette, int index)
{
    utString name;
    std::string const rgb = format_colour(palette.colour(index, name));
    std::string line = ut_concat(rgb, ", ", mrUtils::find_palette_keyword(palette.colour_encoding(index)));
    doublecoDList components;
    palette.colour_components(index, components);
    for (double const component : components)
        line += ut_concat(" ", component);
    if (!name.invalid())
        line += ", " + quote(name);
    return line;
}

void list(Listing& listing, mrColourPalette const& palette)
{
    for (int index = 0; index < palette.size(); ++index)
        listing.add_line(1, ut_concat("colour ", index), describe_colour(palette, index));
}

std::string format_hexadecimal(int hash)
{
    char digits[16];
    std::snprintf(digits, sizeof digits, "%08x", static_cast<unsigned>(hash));
    return digits;
}

void list(Listing& listing, CacheContents const& cache)
{
    listing.add_line(1, "size limit", ut_concat(cache.max_cache_size));
    listing.add_line(1, "shrinkage", ut_concat(cache.shrinkage));
    for (CacheContents::Entry const& entry : cache.entries)
        listing.add_line(1, ut_concat("entry ", entry.hash),
                         ut_concat(format_hexadecimal(entry.hash), ", used ", format_age(entry.age), ", ",
                                   format_size(entry.width, entry.height), ", named ",
                                   quote(utString(entry.image_name))));
}

} // namespace

std::string make_text(FileInfo const& info)
{
    Listing listing;
    listing.add_line(0, make_printable(info.path));
    std::visit([&](auto const& contents) { list(listing, contents); }, info.contents);
    for (std::string const& warning : info.warnings)
        listing.add_line(1, "warning: " + make_printable(warning));
    return listing.text();
}

} // namespace mrtool
