// Material files out of a scene's materials.
#pragma once

#include "scTextures.h"

#include <set>

class mrFileMat;
class mrFMPlainMat;

/// Makes material files of the materials of one scene.
///
/// Each has one facet, with a texture layer where the material has a texture that can be read. Its
/// properties are "scene", the scene file's name without its folder, and "material", the material's own name
/// where it has one. Characters that XML cannot carry become their pictures in all texts (see
/// xmlUtils::carried), so that the file reads back as it was made.
class SC_API scMaterialMaker
{
public:
    /// The shininess of the highest polish, the largest that an MTL file may have.
    static constexpr double max_shininess = 1000.0;

    /// @param scene   borrowed
    /// @param reader  borrowed; reads the textures
    scMaterialMaker(scScene const& scene, scReader const& reader) : m_scene(scene), m_textures(scene, reader)
    {}

    /// Makes the material file of a material. One whose texture cannot be read is made without it. Where a
    /// linear colour multiplies the texture, it becomes the tint of the layer, and the plain material is white.
    /// @param material  less than the number of the scene's materials
    /// @param notes     receives the material's notes, and others on values and texture; see scNote::lines()
    /// @return null without enough memory, and without notes
    std::unique_ptr<mrFileMat> make(std::size_t material, std::vector<scNote>& notes);

    /// Makes the plain material of a material, every number in its range.
    ///
    /// - Colour: the scene's colour in sRGB, times 255. Without one, white under a texture, which then shows as
    ///   it is, and a light grey (204) elsewhere.
    /// - Transparency: 1 - opacity, else the transparency.
    /// - Polish: 1 - roughness, else min(1, sqrt(shininess / max_shininess)), since a highlight's width shrinks
    ///   with the root of the exponent.
    /// - Reflect: metalness, else reflectivity.
    /// - Emission: the largest component of the emitted colour in sRGB, since there is room for one number.
    /// - Refractive index: 1 without one. Other numbers are 0 when the scene does not give them.
    /// @param name   name of the plain material; an empty one becomes "material"
    /// @param notes  receives a note for each value that was changed, to bring it into its range for example
    /// @return null without enough memory, and without notes
    static std::unique_ptr<mrFMPlainMat> make_plain(scMaterial const& material, std::string const& name,
                                                    std::vector<scNote>& notes);

private:
    std::unique_ptr<mrFileMat> make_file(std::size_t material, std::vector<scNote>& notes);
    dgCounted<dgDuctImage> read_texture(scMaterial const& material, std::vector<scNote>& notes);

    scScene const& m_scene;
    scTextures m_textures;
    std::set<std::string> m_replaced; ///< names of textures for which others stand in, as was said
};
