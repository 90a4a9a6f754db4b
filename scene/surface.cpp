#include "surface.h"

#include "utConcat.h"

#include "mrFMPlainMat.h"

#include <algorithm>
#include <cmath>

namespace mrtool {

namespace {

using Notes = std::vector<std::string>;

/// The shininess of the highest polish.
constexpr double most_shininess = 1000.0;

/// The value, or the nearest in its range, or for one that is no number another.
double in_range(char const* what, double value, double high, double otherwise, Notes& notes)
{
    double const taken = std::isnan(value) ? otherwise : std::clamp(value, 0.0, high);
    if (taken != value)
        notes.push_back(ut_concat("the ", what, " of ", value, " is taken as ", taken));
    return taken;
}

std::string colour_text(SceneColour const& colour)
{
    return ut_concat("(", colour[0], " ", colour[1], " ", colour[2], ")");
}

giColour colour_of(SceneMaterial const& material, Notes& notes)
{
    bool const textured = !material.texture.empty() || material.embedded;
    double const unsaid = textured ? 1.0 : 0.8;
    SceneColour const colour = material.colour.value_or(SceneColour{unsaid, unsaid, unsaid});
    unsigned char bytes[3];
    bool changed = false;
    for (std::size_t at = 0; at < 3; ++at) {
        double const taken = std::isnan(colour[at]) ? 0.0 : std::clamp(colour[at], 0.0, 1.0);
        changed = changed || taken != colour[at];
        bytes[at] = static_cast<unsigned char>(std::lround(taken * 255.0));
    }
    if (changed)
        notes.push_back(
            ut_concat("the colour of ", colour_text(colour), " is brought into the range 0 to 1"));
    return {bytes[0], bytes[1], bytes[2], 0};
}

double polish_of(SceneMaterial const& material, Notes& notes)
{
    if (material.roughness)
        return 1.0 - in_range("roughness", *material.roughness, 1.0, 1.0, notes);
    double const shininess =
        in_range("shininess", material.shininess.value_or(0.0), most_shininess, 0.0, notes);
    return std::sqrt(shininess / most_shininess);
}

double reflect_of(SceneMaterial const& material, Notes& notes)
{
    if (material.metalness)
        return in_range("metalness", *material.metalness, 1.0, 0.0, notes);
    return in_range("reflectivity", material.reflectivity.value_or(0.0), 1.0, 0.0, notes);
}

double transparency_of(SceneMaterial const& material, Notes& notes)
{
    if (material.opacity)
        return 1.0 - in_range("opacity", *material.opacity, 1.0, 1.0, notes);
    return in_range("transparency", material.transparency.value_or(0.0), 1.0, 0.0, notes);
}

double emission_of(SceneMaterial const& material, Notes& notes)
{
    if (!material.emission)
        return 0.0;
    SceneColour const& colour = *material.emission;
    double const largest = *std::max_element(colour.begin(), colour.end());
    double const taken = in_range("emission", largest, 1.0, 0.0, notes);
    if (colour != SceneColour{largest, largest, largest})
        notes.push_back(
            ut_concat("the emitted colour ", colour_text(colour), " becomes an emission of ", taken));
    return taken;
}

} // namespace

Surface surface_of(SceneMaterial const& material, Notes& notes)
{
    Surface surface;
    surface.colour = colour_of(material, notes);
    surface.polish = polish_of(material, notes);
    surface.reflect = reflect_of(material, notes);
    surface.transparency = transparency_of(material, notes);
    surface.emission = emission_of(material, notes);
    if (material.refractive_index)
        surface.refractive_index = in_range("refractive index", *material.refractive_index,
                                            mrFMPlainMat::max_refractive_index, 1.0, notes);
    return surface;
}

} // namespace mrtool
