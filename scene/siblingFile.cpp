#include "siblingFile.h"

#include <algorithm>
#include <charconv>
#include <climits>
#include <filesystem>
#include <vector>

namespace sc {

namespace fs = std::filesystem;

namespace {

std::string use_slashes(std::string path)
{
    std::replace(path.begin(), path.end(), '\\', '/');
    return path;
}

std::string decode_percents(std::string_view path)
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

std::string strip_slashed_folders(std::string const& path)
{
    return path.substr(path.rfind('/') + 1);
}

/// Whether the path is below the folder, both from the root and without links in them.
bool lies_below(fs::path const& path, fs::path const& folder)
{
    return std::mismatch(folder.begin(), folder.end(), path.begin(), path.end()).first == folder.end();
}

std::string find_folder(std::string const& scene_path)
{
    return fs::path(scene_path).parent_path().string();
}

/// The ways to understand a path: none for one that is too long for any file, and could take any time to decode.
std::vector<std::string> list_readings(std::string const& named)
{
    if (named.size() >= PATH_MAX)
        return {};
    std::string const slashed = use_slashes(named);
    std::string const local = slashed.starts_with("file://") ? slashed.substr(7) : slashed;
    return {named, local, decode_percents(local)};
}

/// The like without folders.
std::vector<std::string> list_names(std::vector<std::string> const& readings)
{
    std::vector<std::string> names;
    for (std::size_t at = 1; at < readings.size(); ++at)
        names.push_back(strip_slashed_folders(readings[at]));
    return names;
}

bool leads_out(fs::path const& path)
{
    return path.is_absolute() || std::find(path.begin(), path.end(), "..") != path.end();
}

} // namespace

bool lies_inside(std::string const& path, std::string const& folder)
{
    std::error_code failed;
    fs::path const whole = fs::canonical(path, failed);
    return !failed && lies_below(whole, fs::canonical(folder, failed)) && !failed;
}

std::optional<SceneFile> find_in_folder(std::string const& folder_path, std::vector<std::string> const& paths)
{
    fs::path const folder = folder_path;
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

std::vector<std::string> list_inner_paths(std::string const& named)
{
    std::vector<std::string> paths = list_readings(named);
    std::vector<std::string> const names = list_names(paths);
    paths.insert(paths.end(), names.begin(), names.end());
    paths.erase(std::remove_if(paths.begin(), paths.end(), leads_out), paths.end());
    paths.erase(std::unique(paths.begin(), paths.end()), paths.end());
    return paths;
}

std::string strip_folders(std::string const& named)
{
    return strip_slashed_folders(use_slashes(decode_percents(named)));
}

std::optional<SceneFile> find_scene_file_at(std::string const& scene_path, std::string const& named)
{
    return find_in_folder(find_folder(scene_path), list_readings(named));
}

std::optional<SceneFile> find_scene_file(std::string const& scene_path, std::string const& named)
{
    std::vector<std::string> paths = list_readings(named);
    std::vector<std::string> const names = list_names(paths);
    paths.insert(paths.end(), names.begin(), names.end());
    return find_in_folder(find_folder(scene_path), paths);
}

} // namespace sc
