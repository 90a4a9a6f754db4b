#include "scMaterialMaker.h"

#include "notes.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include "gsColour.h"
#include "xmlUtils.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <new>

using sc::make_note;

namespace {

using Notes = std::vector<scNote>;

/// The value, or the nearest in its range, or another for one that is missing or no number.
double bring_into_range(char const* what, std::optional<double> value, double high, double otherwise,
                        Notes& notes)
{
    if (!value)
        return otherwise;
    double const taken = std::isnan(*value) ? otherwise : std::clamp(*value, 0.0, high);
    if (taken != *value)
        notes.push_back(
            make_note(scNoteChanged, ut_concat("the ", what, " of %1 is taken as %2"), *value, taken));
    return taken;
}

std::string write_colour(scColour const& colour)
{
    return ut_concat("(", colour[0], " ", colour[1], " ", colour[2], ")");
}

/// A component of one of the material's colours, in sRGB.
double make_srgb(scMaterial const& material, double component)
{
    return material.linear ? gsColour::linear_to_srgb(component) : component;
}

giColour make_colour(scMaterial const& material, Notes& notes)
{
    double const unsaid = material.textured() ? 1.0 : 0.8;
    scColour const colour = material.colour.value_or(scColour{unsaid, unsaid, unsaid});
    unsigned char bytes[3];
    bool changed = false;
    for (std::size_t at = 0; at < 3; ++at) {
        double const taken = std::isnan(colour[at]) ? 0.0 : std::clamp(colour[at], 0.0, 1.0);
        changed = changed || taken != colour[at];
        bytes[at] = static_cast<unsigned char>(std::lround(make_srgb(material, taken) * 255.0));
    }
    if (changed)
        notes.push_back(make_note(scNoteChanged, "the colour of %1 is brought into the range 0 to 1",
                                  write_colour(colour)));
    return {bytes[0], bytes[1], bytes[2], 0};
}

double make_polish(scMaterial const& material, Notes& notes)
{
    if (material.roughness)
        return 1.0 - bring_into_range("roughness", material.roughness, 1.0, 1.0, notes);
    double const highest = scMaterialMaker::max_shininess;
    return std::sqrt(bring_into_range("shininess", material.shininess, highest, 0.0, notes) / highest);
}

double make_emission(scMaterial const& material, Notes& notes)
{
    if (!material.emission)
        return 0.0;
    scColour const& colour = *material.emission;
    double const largest = *std::max_element(colour.begin(), colour.end());
    double const taken = make_srgb(material, bring_into_range("emission", largest, 1.0, 0.0, notes));
    if (colour != scColour{largest, largest, largest})
        notes.push_back(make_note(scNoteChanged, "the emitted colour %1 becomes an emission of %2",
                                  write_colour(colour), taken));
    return taken;
}

/// The text as it will be read back; another where nothing is left of it.
utString make_carried(std::string const& text, char const* other)
{
    utString const left = xmlUtils::carried(utString(text));
    return left.empty() ? utString(other) : left;
}

mrMatPropcoSet make_properties(scScene const& scene, scMaterial const& material)
{
    mrMatPropcoSet properties(mrInitialSize, mrFillLimit);
    auto const add = [&](char const* name, std::string const& value) {
        if (utString const left = xmlUtils::carried(utString(value)); !left.empty())
            properties.add(mrMatProp(mrMatPropTypeStringTag, name, left, 0));
    };
    add("scene", std::filesystem::path(scene.path).filename().string());
    add("material", material.name);
    return properties;
}

bool has_transparent_pixels(dgDuctImage const& image)
{
    unsigned char const* const pixels = image.pixels();
    for (std::size_t at = 3; at < image.byte_count(); at += 4)
        if (pixels[at] != 255)
            return true;
    return false;
}

std::unique_ptr<mrFMPlainMat> make_coloured(giColour const& colour, scMaterial const& material,
                                            std::string const& name, Notes& notes)
{
    // In this order the notes come.
    double const polish = make_polish(material, notes);
    double const reflect = material.metalness
                               ? bring_into_range("metalness", material.metalness, 1.0, 0.0, notes)
                               : bring_into_range("reflectivity", material.reflectivity, 1.0, 0.0, notes);
    double const transparency =
        material.opacity ? 1.0 - bring_into_range("opacity", material.opacity, 1.0, 1.0, notes)
                         : bring_into_range("transparency", material.transparency, 1.0, 0.0, notes);
    double const emission = make_emission(material, notes);
    double const refractive_index = bring_into_range("refractive index", material.refractive_index,
                                                     mrFMPlainMat::max_refractive_index, 1.0, notes);
    return std::make_unique<mrFMPlainMat>(make_carried(name, "material"),
                                          mrMatPropcoSet(mrInitialSize, mrFillLimit), 0, colour, polish,
                                          reflect, transparency, emission, refractive_index, utString());
}

/// Makes something and adds the notes on it; null, without any, when there is not enough memory.
template <class Made, class Make>
std::unique_ptr<Made> make_noted(Notes& notes, Make const& make)
{
    std::size_t const before = notes.size();
    try {
        return make();
    } catch (std::bad_alloc const&) {
        notes.erase(notes.begin() + static_cast<std::ptrdiff_t>(before), notes.end());
        return nullptr;
    }
}

} // namespace

std::unique_ptr<mrFMPlainMat> scMaterialMaker::make_plain(scMaterial const& material, std::string const& name,
                                                          Notes& notes)
{
    return make_noted<mrFMPlainMat>(notes, [&] {
        giColour const colour = make_colour(material, notes);
        return make_coloured(colour, material, name, notes);
    });
}

std::unique_ptr<mrFileMat> scMaterialMaker::make(std::size_t number, Notes& notes)
{
    return make_noted<mrFileMat>(notes, [&] { return make_file(number, notes); });
}

std::unique_ptr<mrFileMat> scMaterialMaker::make_file(std::size_t number, Notes& notes)
{
    scMaterial const& material = m_scene.materials[number];
    auto const left_out = std::find_if(material.notes.begin(), material.notes.end(),
                                       [](scNote const& each) { return each.kind == scNoteLeftOut; });
    notes.insert(notes.end(), material.notes.begin(), left_out);
    Notes texture_notes;
    dgCounted<dgDuctImage> const texture =
        material.textured() ? read_texture(material, texture_notes) : nullptr;
    giColour const colour = make_colour(material, notes);
    giColour const white(255, 255, 255, 0);
    // White beneath its texture: a colour that is drawn there would count twice.
    bool const tints = texture && material.linear && colour != white;
    auto plain = make_coloured(tints ? white : colour, material, m_scene.material_name(number), notes);
    notes.insert(notes.end(), texture_notes.begin(), texture_notes.end());
    mrFMTexturecoDList layers;
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    if (texture) {
        utString const title = make_carried(m_textures.name(material), "texture");
        texture->new_name(title.c_str());
        layers.append(mrFMTexture(title, mrTexLayerColour, tints, tints ? colour : giColour()));
        images[title] = texture.get();
    }
    notes.insert(notes.end(), left_out, material.notes.end());
    mrFMFacetcoDListPtrcoPtrcoDList facets;
    auto facet = std::make_unique<mrFMFacet>(plain.get(), layers);
    plain.release();
    facets.append(facet.get());
    auto made = std::make_unique<mrFileMat>(make_properties(m_scene, material), facets, images);
    facet.release();
    return made;
}

/// @return the image of the material's texture, or null when it cannot be read
dgCounted<dgDuctImage> scMaterialMaker::read_texture(scMaterial const& material, Notes& notes)
{
    std::string reason;
    dgCounted<dgDuctImage> image = m_textures.read(material, reason);
    std::string const name = material.embedded ? m_textures.name(material) : material.texture;
    std::string const other = m_textures.stand_in(material);
    if (!other.empty() && m_replaced.insert(name).second)
        notes.push_back(make_note(scNoteChanged,
                                  "its texture \"%1\": there is no such file; %2 is taken in its place", name,
                                  other));
    if (!image) {
        notes.push_back(make_note(scNoteFailed, "written without its texture \"%1\": %2", name, reason));
        return nullptr;
    }
    if (m_textures.lies_outside(material))
        notes.push_back(
            make_note(scNoteOutside, "its texture \"%1\" is taken from outside the scene's folder", name));
    if (has_transparent_pixels(*image))
        notes.push_back(
            make_note(scNoteChanged,
                      "the transparency of the texture \"%1\" stays in its image, where a texture "
                      "layer makes no use of it",
                      name));
    return image;
}
