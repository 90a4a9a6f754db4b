// Material files out of a scene's materials.
#pragma once

#include "scTextures.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

class mrFileMat;
class mrFMPlainMat;

/// Makes material files of the materials of one scene.
///
/// One has one facet; its texture layer's image is that of the base colour or diffuse colour. Its properties are
/// "scene", the scene file's name without its folder, and "material", the material's own name where it has one.
/// Characters that XML cannot carry become "?" in its texts. It reads back from a file as it was made.
class SC_API scMaterialMaker
{
public:
    /// The shininess of the highest polish, the largest that an MTL file may have.
    static constexpr double max_shininess = 1000.0;

    /// @param scene   borrowed
    /// @param reader  borrowed; reads the textures
    scMaterialMaker(scScene const& scene, scReader const& reader) : m_scene(scene), m_textures(scene, reader)
    {}

    /// Makes the material file of a material. One whose texture cannot be read is made without it.
    /// @param material  less than the number of the scene's materials
    /// @param notes     receives the material's notes and what else is to be said, see scNote::lines
    /// @return never null
    std::unique_ptr<mrFileMat> make(std::size_t material, std::vector<scNote>& notes);

    /// Makes the plain material of a material, every number in its range.
    ///
    /// Its colour is the scene's colour as it stands, times 255; where the scene has none, white under a texture, which
    /// white leaves as it is, and a light grey (204) elsewhere. Transparency is 1 - opacity, else as said. Polish is
    /// 1 - roughness, else min(1, sqrt(shininess / max_shininess)): highlights shrink as the root of the exponent
    /// grows. Reflect is the metalness, else the reflectivity. Emission, one number, is the largest component of the
    /// emitted colour. The refractive index is 1 and all else 0 where the scene does not say it.
    /// @param name   for the plain material; an empty one becomes "material"
    /// @param notes  receives a note for each value that was brought into its range or otherwise changed
    static std::unique_ptr<mrFMPlainMat> make_plain(scMaterial const& material, std::string const& name,
                                                    std::vector<scNote>& notes);

private:
    dgCounted<dgDuctImage> read_texture(scMaterial const& material, std::vector<scNote>& notes);

    scScene const& m_scene;
    scTextures m_textures;
};
