#include "placesToRead.h"

#include "gltfFile.h"
#include "objStatements.h"
#include "readers.h"
#include "siblingFile.h"

#include "gxFileHints.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <set>
#include <string_view>

namespace sc {

namespace fs = std::filesystem;

namespace {

/// The names that may be those of an OBJ file's material libraries.
std::set<std::string> name_libraries(std::string const& path)
{
    // Stands in for one that is missing.
    std::set<std::string> names{fs::path(path).stem().string() + ".mtl"};
    ObjStatements statements(path);
    ObjStatement statement;
    while (statements.next(statement)) {
        if (statement.word != "mtllib")
            continue;
        names.insert(statement.rest);
        for (std::string_view left = statement.rest; !left.empty();)
            names.emplace(take_word(left));
    }
    return names;
}

std::string read_file(std::string const& path)
{
    std::string bytes;
    utString ignored;
    gxFile const file = gx_open_file(utString(path), ignored);
    char piece[1 << 16];
    for (std::size_t got = 1; file && got > 0;) {
        got = std::fread(piece, 1, sizeof piece, file.get());
        bytes.append(piece, got);
    }
    return bytes;
}

/// What a glTF file has as a "uri", which its buffers and images do. Parsing all of it would take as long as reading
/// it does.
std::set<std::string> name_uris(std::string const& path)
{
    constexpr std::string_view key = "\"uri\"";
    constexpr char blanks[] = " \t\r\n";
    std::set<std::string> names;
    std::string const bytes = read_file(path);
    std::string_view left = bytes;
    for (std::size_t at = 0; (at = left.find(key)) != left.npos;) {
        left.remove_prefix(at + key.size());
        std::size_t const colon = left.find_first_not_of(blanks);
        std::size_t const begin = colon == left.npos ? colon : left.find_first_not_of(blanks, colon + 1);
        if (begin == left.npos || left[colon] != ':' || left[begin] != '"')
            continue;
        std::size_t end = left.find('"', begin + 1);
        while (end != left.npos && left[end - 1] == '\\')
            end = left.find('"', end + 1);
        std::string_view const text = left.substr(begin, end == left.npos ? 0 : end + 1 - begin);
        if (Json const name = text.starts_with("\"data:") ? Json() : Json::parse(text, nullptr, false);
            name.is_string())
            names.insert(name.get<std::string>());
    }
    return names;
}

/// What an environment variable says, or else what it stands for without.
std::string read_variable(char const* name, std::string fallback)
{
    char const* const value = std::getenv(name);
    return value && *value ? value : std::move(fallback);
}

std::vector<std::string> split_paths(std::string_view list)
{
    std::vector<std::string> paths;
    while (!list.empty()) {
        std::string_view const path = list.substr(0, list.find(':'));
        paths.emplace_back(path);
        list.remove_prefix(std::min(path.size() + 1, list.size()));
    }
    return paths;
}

/// The loaders in a list of them, which has the path of each in quotes in a line of its own.
std::vector<std::string> list_modules(std::string const& list)
{
    std::vector<std::string> modules;
    utString ignored;
    gxFile const file = gx_open_file(utString(list), ignored);
    gxFileStream in(file.get());
    for (std::string line; std::getline(in, line);)
        if (line.starts_with("\"/"))
            modules.push_back(line.substr(1, line.find('"', 1) - 1));
    return modules;
}

} // namespace

std::vector<std::string> places_of_scene(std::string const& path)
{
    std::error_code failed;
    fs::path const folder = fs::path(path).parent_path();
    std::vector<std::string> places{folder.empty() ? "." : folder.string(), path};
    std::set<std::string> named;
    if (gx_extension(path) == "obj")
        named = name_libraries(path);
    else if (is_gltf(path))
        named = name_uris(path);
    for (std::string const& name : named)
        if (std::optional<SceneFile> const file = find_scene_file(path, name); file && file->outside)
            places.push_back(file->whole);
    return places;
}

std::vector<std::string> places_of_loaders()
{
    std::vector<std::string> places{"/lib",
                                    "/lib64",
                                    "/usr/lib",
                                    "/usr/lib64",
                                    "/usr/local/lib",
                                    "/etc/ld.so.cache",
                                    "/etc/fonts",
                                    "/usr/share/fontconfig",
                                    "/var/cache/fontconfig"};
    std::string const home = read_variable("HOME", "/nonexistent");
    places.insert(places.end(), {home + "/.fonts", home + "/.fonts.conf",
                                 read_variable("XDG_CONFIG_HOME", home + "/.config") + "/fontconfig",
                                 read_variable("XDG_CACHE_HOME", home + "/.cache") + "/fontconfig"});
    std::string const data = read_variable("XDG_DATA_HOME", home + "/.local/share") + ":" +
                             read_variable("XDG_DATA_DIRS", "/usr/local/share:/usr/share");
    for (std::string const& folder : split_paths(data))
        places.insert(places.end(), {folder + "/fonts", folder + "/mime"});
    for (char const* const name : {"LD_LIBRARY_PATH", "GDK_PIXBUF_MODULE_FILE", "GDK_PIXBUF_MODULEDIR",
                                   "FONTCONFIG_FILE", "FONTCONFIG_PATH"})
        for (std::string const& path : split_paths(read_variable(name, "")))
            places.push_back(path);
    for (std::string const& module : list_modules(read_variable("GDK_PIXBUF_MODULE_FILE", "")))
        places.push_back(module);
    return places;
}

} // namespace sc
