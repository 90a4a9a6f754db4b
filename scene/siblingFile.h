// Files that a scene names.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace sc {

/// The name of the file that a scene's path means, without folders; empty where the path ends in one.
std::string strip_folders(std::string const& named);

struct SceneFile
{
    std::string path;
    std::string whole; ///< the same from the root, without links and "..": one for each file
    /// Whether it lies outside the scene's folder, by an absolute path, ".." or a link. See
    /// scTextures::lies_outside() for why that must be said.
    bool outside = false;
};

/// Whether a path that exists lies below a folder, without links and "..".
bool lies_inside(std::string const& path, std::string const& folder);

/// The first of the paths, relative to a folder, at which a regular file lies.
/// @param folder  "outside" is outside of it
std::optional<SceneFile> find_in_folder(std::string const& folder, std::vector<std::string> const& paths);

/// The paths below any folder that a scene may mean by a path: the path, with "/" or "\\", perhaps percent-encoded,
/// then its name alone. Those that are absolute or have ".." in them are left out.
std::vector<std::string> list_inner_paths(std::string const& named);

/// The regular file that a scene means by a path: relative to the scene's folder, with "/" or "\", perhaps
/// percent-encoded; else the file of that name beside the scene. None where the path has PATH_MAX bytes or
/// more.
std::optional<SceneFile> find_scene_file(std::string const& scene_path, std::string const& named);

/// The like, but only at that path.
std::optional<SceneFile> find_scene_file_at(std::string const& scene_path, std::string const& named);

} // namespace sc
