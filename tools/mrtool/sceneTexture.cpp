#include "sceneTexture.h"

#include "fileKind.h"
#include "sceneFile.h"
#include "text.h"

#include <filesystem>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// The image's format, where its name or its beginning tells one.
std::optional<gxImageFileFormat> format_of(std::string const& path)
{
    KnownFile const file = file_kind(path);
    return file.kind == FileKind::image ? std::optional(file.format) : std::nullopt;
}

} // namespace

std::string SceneTextures::name(SceneMaterial const& material) const
{
    if (!material.embedded) {
        std::string name = name_without_folders(material.texture);
        return name.empty() ? "texture" : name;
    }
    std::string name;
    if (*material.embedded < m_scene.images.size())
        name = name_without_folders(m_scene.images[*material.embedded].name);
    return name.empty() || name[0] == '*' ? text("texture-", *material.embedded + 1) : name;
}

bool SceneTextures::lies_outside(SceneMaterial const& material) const
{
    std::optional<SceneFile> const file =
        material.embedded ? std::nullopt : find_scene_file(m_scene_path, material.texture);
    return file && file->outside;
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
        std::optional<SceneFile> const file = find_scene_file(m_scene_path, material.texture);
        if (file)
            return read_file(file->path, reason);
        reason = no_such_file;
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
