#include "sceneFile.h"

#include <algorithm>
#include <charconv>
#include <filesystem>

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

/// Whether the path, links resolved, is below the folder.
/// @param folder  without links in it
bool lies_below(fs::path const& path, fs::path const& folder)
{
    std::error_code failed;
    fs::path const whole = fs::weakly_canonical(path, failed);
    return !failed &&
           std::mismatch(folder.begin(), folder.end(), whole.begin(), whole.end()).first == folder.end();
}

} // namespace

std::string name_without_folders(std::string const& named)
{
    return last_component(with_slashes(percent_decoded(named)));
}

std::optional<SceneFile> find_scene_file(std::string const& scene_path, std::string const& named)
{
    fs::path const folder = fs::path(scene_path).parent_path();
    std::error_code ignored;
    fs::path const whole_folder = fs::canonical(folder.empty() ? "." : folder, ignored);
    std::string const slashed = with_slashes(named);
    std::string const local = slashed.starts_with("file://") ? slashed.substr(7) : slashed;
    for (std::string const& path : {named, local, percent_decoded(local), last_component(local),
                                    last_component(percent_decoded(local))}) {
        // Of a path with a NUL in it, another file would be opened than the one that was looked at.
        if (path.empty() || path.find('\0') != path.npos)
            continue;
        if (fs::is_regular_file(folder / path, ignored))
            return SceneFile{(folder / path).string(), !lies_below(whole_folder / path, whole_folder)};
    }
    return std::nullopt;
}

} // namespace mrtool
