// What a scene file says of its materials.
#pragma once

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace mrtool {

/// Red, green, blue.
using SceneColour = std::array<double, 3>;

/// An image that stands in the scene file itself.
struct SceneImage
{
    std::string name;      ///< may be empty
    std::string extension; ///< the format's, without the point; may be empty
    int width = 0;         ///< 0 when the bytes are an image file, else they are pixels, RGBA from the top
    int height = 0;
    std::string bytes;
};

/// A material as the scene has it: numbers of any size, texts of any bytes.
struct SceneMaterial
{
    std::string name; ///< empty when it has none
    std::optional<SceneColour> colour;
    std::optional<double> opacity;
    std::optional<double> transparency; ///< where the opacity is not said
    std::optional<double> roughness;
    std::optional<double> shininess;
    std::optional<double> metalness;
    std::optional<double> reflectivity;
    std::optional<double> refractive_index;
    std::optional<SceneColour> emission;

    std::string texture;              ///< path of a texture file as the scene gives it; empty for none
    std::optional<unsigned> embedded; ///< which of the scene's images is the texture instead

    /// What a material file has no place for, in words: "the normal map \"bump.png\"".
    std::vector<std::string> left_out;
    std::vector<std::string> notes;    ///< what else was made of it in a way that is worth saying
    std::vector<std::string> failures; ///< what of it could not be read
};

struct Scene
{
    std::vector<SceneMaterial> materials;
    std::vector<SceneImage> images;
    std::vector<std::string> warnings; ///< what else is to be said of it
    std::vector<std::string> failures; ///< which of its materials could not be read
};

template <class Wire>
void exchange(Wire& wire, SceneColour& colour)
{
    for (double& component : colour)
        wire(component);
}

template <class Wire>
void exchange(Wire& wire, SceneImage& image)
{
    wire(image.name);
    wire(image.extension);
    wire(image.width);
    wire(image.height);
    wire(image.bytes);
}

template <class Wire>
void exchange(Wire& wire, SceneMaterial& material)
{
    wire(material.name);
    wire(material.colour);
    wire(material.opacity);
    wire(material.transparency);
    wire(material.roughness);
    wire(material.shininess);
    wire(material.metalness);
    wire(material.reflectivity);
    wire(material.refractive_index);
    wire(material.emission);
    wire(material.texture);
    wire(material.embedded);
    wire(material.left_out);
    wire(material.notes);
    wire(material.failures);
}

template <class Wire>
void exchange(Wire& wire, Scene& scene)
{
    wire(scene.materials);
    wire(scene.images);
    wire(scene.warnings);
    wire(scene.failures);
}

} // namespace mrtool
