// The texture files that a scene names.
#pragma once

#include "dgCounted.h"
#include "scene.h"
#include "untrustedReader.h"

#include "dgDuctImage.h"

#include <cstdint>
#include <map>
#include <optional>
#include <string>

namespace mrtool {

/// Textures of one scene. The last one read is kept, since materials next to each other often share it, and
/// what failed is not tried again.
class SceneTextures
{
public:
    /// Bytes of the largest texture file that is read.
    static constexpr std::uintmax_t max_file_size = std::uintmax_t{1} << 30;

    /// What the materials of a scene take together, each time that one takes a texture: so many pixels, and so
    /// many more for each byte of its file. A few bytes can stand for very many pixels, and each material that
    /// takes them has them written out and read back.
    static constexpr std::uint64_t max_scene_pixels = std::uint64_t{1} << 30;
    static constexpr std::uint64_t max_pixels_per_byte = 256;

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
    dgCounted<dgDuctImage> image(SceneMaterial const& material, std::string& reason);

private:
    struct Source
    {
        std::string key;  ///< the same for each spelling of a path
        std::string path; ///< empty when it is an embedded image
        std::uint64_t bytes = 0;
    };

    std::optional<Source> source(SceneMaterial const& material, std::string& reason) const;
    dgCounted<dgDuctImage> read(SceneMaterial const& material, Source const& source,
                                std::string& reason) const;

    std::string m_scene_path;
    Scene const& m_scene;
    UntrustedReader const& m_reader;
    std::string m_last_key;
    dgCounted<dgDuctImage> m_last;
    std::map<std::string, std::string> m_failed; ///< from a texture's key to the reason
    std::uint64_t m_pixels = 0;                  ///< that were taken so far
    std::uint64_t m_allowed = max_scene_pixels;
};

} // namespace mrtool
