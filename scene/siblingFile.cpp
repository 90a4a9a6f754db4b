#include "siblingFile.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <filesystem>
#include <vector>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

std::string with_slashes(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string percent_decoded(std::string_view path)
{
    std::string decoded;
    for (std::size_t at = 0; at < path.size(); ++at) {
        unsigned code = 0;
        char const* const digits = path.data() + at + 1;
        bool const coded = path[at] == '%' && at + 2 < path.size() &&
                           std::from_chars(digits, digits + 2, code, 16).ptr == digits + 2;
        decoded += coded ? static_cast<char>(code) : path[at];
        at += coded ? 2 : 0;
    }
    return decoded;
}

std::string last_component(std::string const& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Whether the path is below the folder, both from the root and without links in them.
bool lies_below(fs::path const& path, fs::path const& folder)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

/// The first of the paths, relative to the scene's folder, at which a regular file lies.
std::optional<SceneFile> first_file(std::string const& scene_path, std::vector<std::string> const& paths)
{
    fs::path const folder = fs::path(scene_path).parent_path();
    std::error_code failed;
    for (std::string const& path : paths) {
        // Of a path with a NUL in it, another file would be opened than the one that was looked at.
        if (path.empty() || path.find('\0') != path.npos || !fs::is_regular_file(folder / path, failed))
            continue;
        fs::path const whole_folder = fs::canonical(folder.empty() ? "." : folder, failed);
        fs::path const whole = fs::weakly_canonical(whole_folder / path, failed);
        return SceneFile{(folder / path).string(), whole.string(), !lies_below(whole, whole_folder)};
    }
    return std::nullopt;
}

/// The ways to understand a path.
std::vector<std::string> readings(std::string const& named)
{
    std::string const slashed = with_slashes(named);
    std::string const local = slashed.starts_with("file://") ? slashed.substr(7) : slashed;
    return {named, local, percent_decoded(local)};
}

/// What no file's path can be is not worked on: it may have any length.
bool too_long(std::string const& named)
{
    return named.size() >= PATH_MAX;
}

} // namespace

std::string name_without_folders(std::string const& named)
{
    return last_component(with_slashes(percent_decoded(named)));
}

std::optional<SceneFile> find_scene_file_at(std::string const& scene_path, std::string const& named)
{
    return too_long(named) ? std::nullopt : first_file(scene_path, readings(named));
}

std::optional<SceneFile> find_scene_file(std::string const& scene_path, std::string const& named)
{
    if (too_long(named))
        return std::nullopt;
    std::vector<std::string> paths = readings(named);
    for (std::string const& path : {paths[1], paths[2]})
        paths.push_back(last_component(path));
    return first_file(scene_path, paths);
}

} // namespace mrtool
