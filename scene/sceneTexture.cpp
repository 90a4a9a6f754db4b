#include "sceneTexture.h"

#include "fileKind.h"
#include "siblingFile.h"
#include "utConcat.h"

#include <filesystem>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// The image's format, where its name or its beginning tells one.
std::optional<gxImageFileFormat> format_of(std::string const& path)
{
    KnownFile const file = detect_kind(path);
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
    return name.empty() || name[0] == '*' ? ut_concat("texture-", *material.embedded + 1) : name;
}

bool SceneTextures::lies_outside(SceneMaterial const& material) const
{
    std::optional<SceneFile> const file =
        material.embedded ? std::nullopt : find_scene_file(m_scene_path, material.texture);
    return file && file->outside;
}

dgCounted<dgDuctImage> SceneTextures::image(SceneMaterial const& material, std::string& reason)
{
    std::optional<Source> const from = source(material, reason);
    if (!from)
        return nullptr;
    if (auto const failed = m_failed.find(from->key); failed != m_failed.end()) {
        reason = failed->second;
        return nullptr;
    }
    if (m_pixels >= m_allowed) {
        reason = "the scene's textures have more pixels than are allowed";
        return nullptr;
    }
    if (from->key != m_last_key) {
        m_last.reset(); // two large ones at a time would take twice the memory
        m_last_key = from->key;
        m_last = read(material, *from, reason);
    }
    if (!m_last) {
        m_failed[from->key] = reason;
        return nullptr;
    }
    m_pixels += static_cast<std::uint64_t>(m_last->width()) * static_cast<std::uint64_t>(m_last->height());
    m_allowed += from->bytes * max_pixels_per_byte;
    return dg_hold(m_last.get());
}

std::optional<SceneTextures::Source> SceneTextures::source(SceneMaterial const& material,
                                                           std::string& reason) const
{
    if (material.embedded) {
        if (*material.embedded < m_scene.images.size())
            return Source{ut_concat("*", *material.embedded), "",
                          m_scene.images[*material.embedded].bytes.size()};
        reason = "the scene has no such image";
        return std::nullopt;
    }
    if (std::optional<SceneFile> const file = find_scene_file(m_scene_path, material.texture)) {
        std::error_code ignored;
        return Source{file->whole, file->path, fs::file_size(file->path, ignored)};
    }
    reason = no_such_file;
    return std::nullopt;
}

dgCounted<dgDuctImage> SceneTextures::read(SceneMaterial const& material, Source const& source,
                                           std::string& reason) const
{
    if (material.embedded)
        return m_reader.image(m_scene.images[*material.embedded], reason);
    if (source.bytes > max_file_size) {
        reason = "larger than 1 GiB";
        return nullptr;
    }
    if (std::optional<gxImageFileFormat> const format = format_of(source.path))
        return m_reader.image(source.path, *format, reason);
    reason = "not an image file of a known format";
    return nullptr;
}

} // namespace mrtool
