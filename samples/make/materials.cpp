// Material files, put together and written with the library.
#include "samples.h"

#include "colours.h"
#include "picture.h"
#include "textures.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace {

namespace fs = std::filesystem;

giColour as_colour(gsRGB const& colour)
{
    auto const byte = [](int part) { return static_cast<unsigned char>(part); };
    return {byte(colour.red()), byte(colour.green()), byte(colour.blue()), 0};
}

mrMatProp text_property(char const* name, char const* value)
{
    return {mrMatPropTypeStringTag, name, value, 0};
}

mrMatProp integer_property(char const* name, int value)
{
    return {mrMatPropTypeIntegerTag, name, value, 0};
}

mrMatProp double_property(char const* name, double value)
{
    return {mrMatPropTypeDoubleTag, name, value, 0};
}

/// How the surface of a facet looks; what is not said is a dull, opaque surface.
struct Look
{
    utString name;
    gsRGB colour{};
    double polish = 0.2;
    double reflect = 0.0;
    double transparency = 0.0;
    double emission = 0.0;
    double refractive_index = 1.0;
    int affinity = 0;
    utString shader_definition{};
    std::vector<mrMatProp> properties{};
};

mrFMTexture layer(char const* image)
{
    return {image, mrTexLayerColour, 0, as_colour(colours::white)};
}

mrFMTexture tinted_layer(char const* image, gsRGB const& tint)
{
    return {image, mrTexLayerColour, 1, as_colour(tint)};
}

/// What a material file is made of.
class Draft
{
public:
    void add(mrMatProp const& property) { m_properties.add(property); }

    void add(Look const& look, std::vector<mrFMTexture> const& layers = {})
    {
        mrMatPropcoSet properties(mrInitialSize, mrFillLimit);
        for (mrMatProp const& property : look.properties)
            properties.add(property);
        mrFMTexturecoDList textures;
        for (mrFMTexture const& texture : layers)
            textures.append(texture);
        auto* const plain = new mrFMPlainMat(look.name, properties, look.affinity, as_colour(look.colour),
                                             look.polish, look.reflect, look.transparency, look.emission,
                                             look.refractive_index, look.shader_definition);
        m_facets.append(new mrFMFacet(plain, textures));
    }

    /// Layers find the image by its own name.
    void add(Image image)
    {
        m_images[image->name()] = image.get();
        m_held.push_back(std::move(image));
    }

    /// Called once: the facets are the file's from then on.
    void write(fs::path const& path)
    {
        mrFileMat const material(m_properties, m_facets, m_images);
        fs::create_directories(path.parent_path());
        if (!material.write(utString(path.string())))
            throw std::runtime_error("cannot write " + path.string());
    }

private:
    mrMatPropcoSet m_properties{mrInitialSize, mrFillLimit};
    mrFMFacetcoDListPtrcoPtrcoDList m_facets;
    utStringdgDuctImagecoTablePtrcoPtrcoTable m_images{mrInitialSize, mrFillLimit};
    std::vector<Image> m_held;
};

// ---- One facet

void make_terracotta(fs::path const& folder)
{
    Draft draft;
    draft.add(text_property("supplier", "Kiln & Sons <bricks, tiles>"));
    draft.add(integer_property("catalogue number", 40217));
    draft.add(double_property("price a square metre", 38.9));
    draft.add(
        {.name = "Terracotta",
         .colour = colours::terracotta,
         .polish = 0.12,
         .refractive_index = 1.6,
         .affinity = 3,
         .shader_definition = "shader fired_clay\n"
                              "  base    colour 0.77 0.38 0.26  roughness 0.88\n"
                              "  speckle scale 0.4  amount 0.06\n"
                              "  edge    when facing < 0.2  lighten 0.1\n"
                              "end\n",
         .properties = {text_property("finish", "unglazed"), integer_property("fired at, degrees", 1040),
                        double_property("thickness, mm", 9.5)}});
    draft.write(folder / "terracotta.multimat");
}

void make_celadon(fs::path const& folder)
{
    Draft draft;
    draft.add(text_property("atelier", "Poterie de la Forêt"));
    draft.add({.name = "Céladon 青磁",
               .colour = {150, 186, 164},
               .polish = 0.86,
               .reflect = 0.12,
               .refractive_index = 1.5,
               .properties = {text_property("origine", "Ærø, Łódź, Ψαρά")}});
    draft.write(folder / "céladon.multimat");
}

void make_oak(fs::path const& folder)
{
    Draft draft;
    draft.add(text_property("species", "Quercus robur"));
    draft.add({.name = "Oak, oiled", .colour = colours::white, .polish = 0.35, .refractive_index = 1.5},
              {layer("oak")});
    draft.add(oak());
    draft.write(folder / "oak.multimat");
}

void make_marble(fs::path const& folder)
{
    Draft draft;
    draft.add({.name = "Green marble",
               .colour = colours::white,
               .polish = 0.92,
               .reflect = 0.15,
               .refractive_index = 1.49},
              {layer("marble")});
    draft.add(marble());
    draft.write(folder / "marble.multimat");
}

// ---- Three facets

void make_glasses(fs::path const& folder)
{
    Draft draft;
    draft.add(text_property("collection", "Blown glass"));
    draft.add({.name = "Amber",
               .colour = colours::ochre,
               .polish = 0.98,
               .reflect = 0.1,
               .transparency = 0.7,
               .refractive_index = 1.52});
    draft.add({.name = "Sea green",
               .colour = colours::teal,
               .polish = 0.98,
               .reflect = 0.1,
               .transparency = 0.75,
               .refractive_index = 1.52});
    draft.add({.name = "Ruby, lit from behind",
               .colour = colours::brick,
               .polish = 0.95,
               .reflect = 0.1,
               .transparency = 0.6,
               .emission = 0.35,
               .refractive_index = 1.52});
    draft.write(folder / "glasses.multimat");
}

void make_kitchen(fs::path const& folder)
{
    Draft draft;
    draft.add(text_property("room", "kitchen"));
    draft.add({.name = "Floor", .colour = colours::white, .polish = 0.4}, {layer("star tiles")});
    draft.add({.name = "Wall", .colour = colours::white, .polish = 0.8, .reflect = 0.08},
              {layer("scale tiles")});
    draft.add({.name = "Worktop", .colour = colours::white, .polish = 0.7}, {layer("terrazzo")});
    draft.add(star_tiles());
    draft.add(scale_tiles());
    draft.add(terrazzo());
    draft.write(folder / "kitchen.multimat");
}

void make_upholstery(fs::path const& folder)
{
    Draft draft;
    draft.add(integer_property("rub test, cycles", 45000));
    Look cloth{.name = "Linen, undyed", .colour = colours::white, .polish = 0.05};
    draft.add(cloth, {layer("linen")});
    // Facets are drawn in order, and a tint stays on its image for the facets that follow: grey comes first,
    // and the second tint is given to an image of its own.
    cloth.name = "Linen, dyed with madder";
    draft.add(cloth, {tinted_layer("linen", {232, 124, 96})});
    cloth.name = "Herringbone, dyed with woad";
    draft.add(cloth, {tinted_layer("herringbone", {96, 150, 190})});
    draft.add(linen());
    draft.add(herringbone());
    draft.write(folder / "upholstery.multimat");
}

// ---- Eight facets

void make_paints(fs::path const& folder)
{
    std::vector<std::pair<char const*, gsRGB>> const paints{
        {"Cream", colours::cream}, {"Ochre", colours::ochre}, {"Terracotta", colours::terracotta},
        {"Brick", colours::brick}, {"Plum", colours::plum},   {"Slate", colours::slate},
        {"Teal", colours::teal},   {"Sage", colours::sage}};
    Draft draft;
    draft.add(text_property("collection", "House paints"));
    for (auto const& [name, colour] : paints)
        draft.add({.name = name, .colour = colour, .polish = 0.3});
    draft.write(folder / "paints.multimat");
}

void make_sampler(fs::path const& folder)
{
    Draft draft;
    draft.add(text_property("collection", "One of each"));
    draft.add({.name = "Oak", .colour = colours::white, .polish = 0.35}, {layer("oak")});
    draft.add({.name = "Slate", .colour = colours::slate});
    draft.add({.name = "Star tiles", .colour = colours::white, .polish = 0.4}, {layer("star tiles")});
    draft.add({.name = "Terracotta", .colour = colours::terracotta});
    draft.add({.name = "Linen, dyed with weld", .colour = colours::white, .polish = 0.05},
              {tinted_layer("linen", {214, 206, 128})});
    draft.add({.name = "Plum", .colour = colours::plum});
    draft.add({.name = "Scale tiles", .colour = colours::white, .polish = 0.8}, {layer("scale tiles")});
    draft.add({.name = "Brass",
               .colour = {206, 160, 78},
               .polish = 0.75,
               .reflect = 0.9,
               .refractive_index = 1.18});
    draft.add(oak());
    draft.add(star_tiles());
    draft.add(linen());
    draft.add(scale_tiles());
    draft.write(folder / "sampler.multimat");
}

} // namespace

void make_materials(fs::path const& samples)
{
    fs::path const folder = samples / "materials";
    make_terracotta(folder);
    make_celadon(folder);
    make_oak(folder);
    make_marble(folder);
    make_glasses(folder);
    make_kitchen(folder);
    make_upholstery(folder);
    make_paints(folder);
    make_sampler(folder);
}
