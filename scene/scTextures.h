// The textures of a scene.
#pragma once

#include "scReader.h"

#include <map>
#include <memory>

namespace sc {
class TextureFinder;
}

/// Reads the textures of one scene on demand: files that it names and images that stand in it. Keeps the
/// last one, which materials next to each other often share, and never tries again what failed.
///
/// Looks for a file at its path relative to the scene's folder, with "/" or "\", as it stands and
/// percent-decoded. What is not there stands in for it: the file of its name beside the scene, then what lies at the
/// path or has the name in each of scReadOptions::texture_folders, then in all of these folders the like without
/// regard to case. Only regular files count. Absolute paths and ".." lead nowhere but where the scene's folder has
/// them lead, and a name in another case never out of a folder. As safe for untrusted input as the reader is, but
/// the caller decides what to do about files from outside: see lies_outside(). Functions without a
/// reason for a failure may throw std::bad_alloc.
class SC_API scTextures
{
public:
    /// Bytes of the largest texture file that is read.
    static constexpr std::uintmax_t max_file_size = std::uintmax_t{1} << 30;

    /// Pixels that all calls of read() give together, and how many more each byte of a file allows. A few
    /// bytes can stand for very many pixels, which a caller who writes a file a material writes each time.
    static constexpr std::uint64_t max_scene_pixels = std::uint64_t{1} << 30;
    static constexpr std::uint64_t max_pixels_per_byte = 256;

    /// @param scene   borrowed; it has its path already
    /// @param reader  borrowed
    scTextures(scScene const& scene, scReader const& reader);
    ~scTextures();

    /// The name of the material's texture, a file's name without its folders; never empty.
    std::string name(scMaterial const& material) const;

    /// Whether the texture is a file outside the scene's folder and the reader's folders for textures, by an
    /// absolute path, ".." or a link. Such a path can bring a private picture of the user into a file that is
    /// handed on, when the scene comes from a stranger.
    bool lies_outside(scMaterial const& material) const;

    /// The path of the file that stands in for the one that the scene names; empty where there is none.
    std::string stand_in(scMaterial const& material) const;

    /// Reads the image of the material's texture; only for a material that is textured().
    /// @param reason  receives the reason for a failure, in words
    /// @return the image, which later calls may return again, or null
    dgCounted<dgDuctImage> read(scMaterial const& material, std::string& reason);

private:
    struct Source
    {
        std::string key;  ///< the same for each spelling of a path
        std::string path; ///< empty when it is an embedded image
        std::uint64_t bytes = 0;
    };

    dgCounted<dgDuctImage> read_kept(scMaterial const& material, std::string& reason);
    std::optional<Source> find_source(scMaterial const& material, std::string& reason) const;
    dgCounted<dgDuctImage> read(scMaterial const& material, Source const& source, std::string& reason) const;

    scScene const& m_scene;
    scReader const& m_reader;
    std::unique_ptr<sc::TextureFinder> m_finder;
    std::string m_last_key;
    dgCounted<dgDuctImage> m_last;
    std::map<std::string, std::string> m_failed; ///< from a texture's key to the reason
    std::uint64_t m_pixels = 0;                  ///< that were taken so far
    std::uint64_t m_allowed = max_scene_pixels;
};
