// The texture files that a scene names.
#pragma once

#include "counted.h"
#include "scene.h"
#include "untrustedReader.h"

#include "dgDuctImage.h"

#include <string>

namespace mrtool {

/// Textures of one scene. The last one read is kept, since materials next to each other often share it.
class SceneTextures
{
public:
    /// Bytes of the largest texture file that is read.
    static constexpr std::uintmax_t max_file_size = std::uintmax_t{1} << 30;

    /// @param scene_path  where the scene was read from
    SceneTextures(std::string scene_path, Scene const& scene, UntrustedReader const& reader)
        : m_scene_path(std::move(scene_path)), m_scene(scene), m_reader(reader)
    {}

    /// The name of the material's texture, a file's name without its folders; never empty.
    std::string name(SceneMaterial const& material) const;

    /// Whether the texture is a file outside the scene's folder.
    bool lies_outside(SceneMaterial const& material) const;

    /// The image of the material's texture; null when it cannot be read.
    /// @param reason  receives in words why it is null
    Counted<dgDuctImage> image(SceneMaterial const& material, std::string& reason);

private:
    Counted<dgDuctImage> read(SceneMaterial const& material, std::string& reason) const;
    Counted<dgDuctImage> read_file(std::string const& path, std::string& reason) const;

    std::string m_scene_path;
    Scene const& m_scene;
    UntrustedReader const& m_reader;
    std::string m_last_key;
    std::string m_last_reason;
    Counted<dgDuctImage> m_last;
};

} // namespace mrtool
