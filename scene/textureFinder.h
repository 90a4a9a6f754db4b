// The files that a scene means by the names of its textures.
#pragma once

#include "siblingFile.h"

#include <cstddef>
#include <map>
#include <optional>
#include <string>
#include <vector>

namespace sc {

struct TextureFile : SceneFile
{
    /// Whether the scene names another file: that one is found by its name alone, without regard to case, or in
    /// another folder.
    bool stands_in = false;
};

/// Finds textures as scTextures says, each name once.
class TextureFinder
{
public:
    /// Entries of folders that are looked at without regard to case, all together. A folder that has more than are
    /// left is passed over.
    static constexpr std::size_t max_entries = 100'000;

    /// @param folders  to look in behind the scene's own
    TextureFinder(std::string const& scene_path, std::vector<std::string> const& folders);

    /// @return null where there is no such file
    TextureFile const* find(std::string const& named);

private:
    /// From names without regard to case to those that the folder has.
    using Listing = std::map<std::string, std::string>;

    std::optional<TextureFile> look_for(std::string const& named);
    std::optional<TextureFile> look_for_any_case(std::vector<std::string> const& paths);
    std::string spell(std::string const& folder, std::string const& path);
    Listing const& list(std::string const& folder, std::string const& below);

    std::string m_scene_path;
    std::vector<std::string> m_folders;                        ///< the scene's first
    std::map<std::string, std::optional<TextureFile>> m_found; ///< from each name that was looked for
    std::map<std::string, Listing> m_listings;                 ///< from the paths of folders
    std::size_t m_left = max_entries;
};

} // namespace sc
