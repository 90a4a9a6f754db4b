// Files that a scene names.
#pragma once

#include <optional>
#include <string>

namespace mrtool {

/// The name of the file that a scene's path means, without folders; empty where the path ends in one.
std::string name_without_folders(std::string const& named);

/// The regular file that a scene means by a path: relative to the scene's folder, with "/" or "\", perhaps
/// percent-encoded; else the file of that name beside the scene.
///
/// Files outside the scene's folder are not taken, be it by an absolute path, by ".." or by a link: a scene
/// from a stranger could have any picture of its reader's put into the material file that he hands on.
/// @param reason  receives in words why there is no such file
std::optional<std::string> find_scene_file(std::string const& scene_path, std::string const& named,
                                           std::string& reason);

} // namespace mrtool
