// What is in a scene file.
#pragma once

#include "giTriBlock.h"
#include "scExport.h"
#include "scNote.h"

#include <array>
#include <cstddef>
#include <memory>
#include <optional>
#include <string>
#include <vector>

/// Red, green, blue; 0 to 1 where the scene keeps to its format.
using scColour = std::array<double, 3>;

/// A material as the scene has it: numbers of any size, NaN too, texts of any bytes. A value that the scene does not
/// say is none. Of a glTF scene, what the file leaves out has the value that the format gives it.
struct scMaterial
{
    /// Bytes of the longest name and of the longest path of a texture; a longer name is cut.
    static constexpr std::size_t max_text = 4096;

    std::string name; ///< empty when it has none
    std::optional<scColour> colour;
    std::optional<double> opacity;
    std::optional<double> transparency; ///< where the opacity is not said
    std::optional<double> roughness;
    std::optional<double> shininess;
    std::optional<double> metalness;
    std::optional<double> reflectivity;
    std::optional<double> refractive_index;
    std::optional<scColour> emission;

    std::string texture;                 ///< path of a texture file as the scene gives it; empty for none
    std::optional<std::size_t> embedded; ///< which of the scene's images is the texture instead

    /// Those of a kind together: what failed first, what is left out last.
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
    /// Which of the scene's materials it has: the only one of that name. None where there is no such one, and as long
    /// as the materials are not read: meshes and materials are read by different readers, which agree on names alone.
    std::optional<std::size_t> material;
};

/// A scene, as far as it was read: see scReader.
struct SC_API scScene
{
    std::string path; ///< of the file
    std::vector<scMaterial> materials;
    std::vector<scImage> images;
    std::vector<scSurface> surfaces;
    /// What is to be said of the scene as a whole, what failed last. A note that failed is of materials that could
    /// not be read.
    std::vector<scNote> notes;

    /// The material's name, or "material N" for the Nth when it has none.
    /// @param material  less than the number of materials
    std::string material_name(std::size_t material) const;
};
