#include "sceneTexture.h"

#include "fileKind.h"
#include "text.h"

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

/// The image's format, where its name or its beginning tells one.
std::optional<gxImageFileFormat> format_of(std::string const& path)
{
    KnownFile const file = file_kind(path);
    return file.kind == FileKind::image ? std::optional(file.format) : std::nullopt;
}

} // namespace

std::optional<std::string> find_texture_file(std::string const& scene_path, std::string const& texture)
{
    fs::path const folder = fs::path(scene_path).parent_path();
    std::string const slashed = with_slashes(texture);
    std::string local = slashed.starts_with("file://") ? slashed.substr(7) : slashed;
    for (std::string const& path : {texture, local, percent_decoded(local), last_component(local),
                                    last_component(percent_decoded(local))}) {
        std::error_code ignored;
        // Of a path with a NUL in it, another file would be opened than the one that was looked at.
        if (path.empty() || path.find('\0') != path.npos)
            continue;
        if (fs::is_regular_file(folder / path, ignored))
            return (folder / path).string();
    }
    return std::nullopt;
}

std::string SceneTextures::name(SceneMaterial const& material) const
{
    if (!material.embedded)
        return last_component(percent_decoded(with_slashes(material.texture)));
    std::string name;
    if (*material.embedded < m_scene.images.size())
        name = last_component(with_slashes(m_scene.images[*material.embedded].name));
    return name.empty() || name[0] == '*' ? text("texture-", *material.embedded + 1) : name;
}

Counted<dgDuctImage> SceneTextures::image(SceneMaterial const& material, std::string& reason)
{
    std::string key = material.embedded ? text("*", *material.embedded) : material.texture;
    if (key != m_last_key) {
        m_last_key = std::move(key);
        m_last_reason.clear();
        m_last = read(material, m_last_reason);
    }
    reason = m_last_reason;
    return hold(m_last.get());
}

Counted<dgDuctImage> SceneTextures::read(SceneMaterial const& material, std::string& reason) const
{
    if (!material.embedded) {
        std::optional<std::string> const path = find_texture_file(m_scene_path, material.texture);
        if (path)
            return read_file(*path, reason);
        reason = "there is no such file";
        return nullptr;
    }
    if (*material.embedded < m_scene.images.size())
        return m_reader.image(m_scene.images[*material.embedded], reason);
    reason = "the scene has no such image";
    return nullptr;
}

Counted<dgDuctImage> SceneTextures::read_file(std::string const& path, std::string& reason) const
{
    std::error_code ignored;
    if (fs::file_size(path, ignored) > max_file_size) {
        reason = "larger than 1 GiB";
        return nullptr;
    }
    if (std::optional<gxImageFileFormat> const format = format_of(path))
        return m_reader.image(path, *format, reason);
    reason = "not an image file of a known format";
    return nullptr;
}

} // namespace mrtool
