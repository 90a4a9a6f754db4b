// The contents of a scene file.
#pragma once

#include "giTriBlock.h"
#include "scNote.h"

#include <array>
#include <memory>
#include <optional>

/// Red, green, blue; 0 to 1 where the scene keeps to its format.
using scColour = std::array<double, 3>;

/// A material as the scene has it. Numbers have any size and may be NaN, texts hold any bytes. A value that
/// the scene does not give is empty; in a glTF scene it has the default of that format.
struct scMaterial
{
    /// Bytes of the longest name and of the longest path of a texture; a longer name is cut.
    static constexpr std::size_t max_text = 4096;

    std::string name; ///< empty when it has none
    std::optional<scColour> colour;
    std::optional<double> opacity;
    std::optional<double> transparency; ///< never beside an opacity in an MTL file's material
    std::optional<double> roughness;
    std::optional<double> shininess;
    std::optional<double> metalness;
    std::optional<double> reflectivity;
    std::optional<double> refractive_index;
    std::optional<scColour> emission;
    /// Whether the colours are linear factors, as in glTF: proportional to light, and the first one multiplies the
    /// texture. Otherwise they are sRGB.
    bool linear = false;

    std::string texture;                 ///< path of a texture file as the scene gives it; empty for none
    std::optional<std::size_t> embedded; ///< index of the scene's image that is the texture instead

    /// Failures come first, omissions last.
    std::vector<scNote> notes;

    bool textured() const { return !texture.empty() || embedded; }
};

/// An image that stands in the scene file itself.
struct scImage
{
    std::string name;      ///< may be empty
    std::string extension; ///< the format's, without the point; may be empty
    int width = 0;         ///< 0 when the bytes are an image file, else they are pixels, RGBA from the top
    int height = 0;
    std::string bytes;
};

/// A mesh where the scene shows it, in the scene's own coordinates; see gx_read_dmt_file.
struct scSurface
{
    std::unique_ptr<giTriBlock> block;
    std::string material_name; ///< as the reader of meshes has it; may be empty
    /// Index of the scene's only material of that name. Empty where no material or several have it, and
    /// until the materials are read. Names decide, since different readers read materials and meshes of OBJ
    /// and glTF files.
    std::optional<std::size_t> material;
};

/// A scene, as far as it was read: see scReader.
struct scScene
{
    std::string path; ///< of the file
    std::vector<scMaterial> materials;
    std::vector<scImage> images;
    std::vector<scSurface> surfaces;
    /// Notes on the scene as a whole; what failed comes last and means materials that are missing.
    std::vector<scNote> notes;

    /// The material's name, or "material N" for the Nth when it has none.
    /// @param material  less than the number of materials
    std::string material_name(std::size_t material) const
    {
        std::string const& name = materials[material].name;
        return name.empty() ? "material " + std::to_string(material + 1) : name;
    }
};
