// The textures of a scene.
#pragma once

#include "scReader.h"

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>

/// Reads the textures of one scene on demand, from the files that it names and from the scene itself. The last one
/// read is kept, since materials next to each other often share it, and what failed is not tried again.
///
/// A file is looked for at its path relative to the scene's folder, with "/" or "\", as it is and percent-decoded,
/// then by its name alone beside the scene; it must be a regular file. Safe for untrusted input as the reader is.
/// One thing remains for the caller to decide: see lies_outside().
class SC_API scTextures
{
public:
    /// Bytes of the largest texture file that is read.
    static constexpr std::uintmax_t max_file_size = std::uintmax_t{1} << 30;

    /// The materials of a scene may take so many pixels together, each time that one takes a texture, and so many
    /// more for each byte of its file: a few bytes can stand for very many pixels, and whoever makes something of
    /// each material writes them each time.
    static constexpr std::uint64_t max_scene_pixels = std::uint64_t{1} << 30;
    static constexpr std::uint64_t max_pixels_per_byte = 256;

    /// @param scene   borrowed
    /// @param reader  borrowed
    scTextures(scScene const& scene, scReader const& reader) : m_scene(scene), m_reader(reader) {}

    /// The name of the material's texture, a file's name without its folders; never empty.
    std::string name(scMaterial const& material) const;

    /// Whether the texture is a file outside the scene's folder, by an absolute path, ".." or a link. By such a path,
    /// a scene from a stranger can have a picture of its reader's own put into a file that is handed on.
    bool lies_outside(scMaterial const& material) const;

    /// Reads the image of the material's texture. Not for a material without.
    /// @param reason  receives in words why there is none
    /// @return a handle on an image that later calls may hand out again, or null
    dgCounted<dgDuctImage> read(scMaterial const& material, std::string& reason);

private:
    struct Source
    {
        std::string key;  ///< the same for each spelling of a path
        std::string path; ///< empty when it is an embedded image
        std::uint64_t bytes = 0;
    };

    std::optional<Source> find_source(scMaterial const& material, std::string& reason) const;
    dgCounted<dgDuctImage> read(scMaterial const& material, Source const& source, std::string& reason) const;

    scScene const& m_scene;
    scReader const& m_reader;
    std::string m_last_key;
    dgCounted<dgDuctImage> m_last;
    std::map<std::string, std::string> m_failed; ///< from a texture's key to the reason
    std::uint64_t m_pixels = 0;                  ///< that were taken so far
    std::uint64_t m_allowed = max_scene_pixels;
};
