#include "scTextures.h"

#include "notes.h"
#include "safely.h"
#include "textureFinder.h"

#include "gxFileHints.h"

#include <filesystem>

using sc::strip_folders;
using sc::TextureFile;

scTextures::scTextures(scScene const& scene, scReader const& reader)
    : m_scene(scene),
      m_reader(reader),
      m_finder(std::make_unique<sc::TextureFinder>(scene.path, reader.options().texture_folders))
{}

scTextures::~scTextures() = default;

std::string scTextures::name(scMaterial const& material) const
{
    if (!material.embedded) {
        std::string name = strip_folders(material.texture);
        return name.empty() ? "texture" : name;
    }
    std::string name;
    if (*material.embedded < m_scene.images.size())
        name = strip_folders(m_scene.images[*material.embedded].name);
    return name.empty() || name[0] == '*' ? ut_concat("texture-", *material.embedded + 1) : name;
}

bool scTextures::lies_outside(scMaterial const& material) const
{
    if (material.embedded)
        return false;
    TextureFile const* const file = m_finder->find(material.texture);
    return file && file->outside;
}

std::string scTextures::stand_in(scMaterial const& material) const
{
    TextureFile const* const file = material.embedded ? nullptr : m_finder->find(material.texture);
    return file && file->stands_in ? file->path : std::string();
}

dgCounted<dgDuctImage> scTextures::read(scMaterial const& material, std::string& reason)
{
    dgCounted<dgDuctImage> image;
    if (!sc::do_safely(reason, [&] { return (image = read_kept(material, reason)) != nullptr; }) && !m_last)
        m_last_key.clear(); // what ran out of memory is tried again
    return image;
}

dgCounted<dgDuctImage> scTextures::read_kept(scMaterial const& material, std::string& reason)
{
    std::optional<Source> const from = find_source(material, reason);
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

std::optional<scTextures::Source> scTextures::find_source(scMaterial const& material,
                                                          std::string& reason) const
{
    if (material.embedded) {
        if (*material.embedded < m_scene.images.size())
            return Source{ut_concat("*", *material.embedded), "",
                          m_scene.images[*material.embedded].bytes.size()};
        reason = "the scene has no such image";
        return std::nullopt;
    }
    if (TextureFile const* const file = m_finder->find(material.texture)) {
        std::error_code ignored;
        return Source{file->whole, file->path, std::filesystem::file_size(file->path, ignored)};
    }
    reason = sc::no_such_file;
    return std::nullopt;
}

dgCounted<dgDuctImage> scTextures::read(scMaterial const& material, Source const& source,
                                        std::string& reason) const
{
    if (material.embedded)
        return m_reader.read_image(m_scene.images[*material.embedded], reason);
    if (source.bytes > max_file_size) {
        reason = "larger than 1 GiB";
        return nullptr;
    }
    gxImageFileFormat format = gxImageFilePNG;
    if (!gxImageFileUtils::file_format_from_content(gx_read_beginning(source.path), format) &&
        !gxImageFileUtils::file_format_from_extension(utString(gx_extension(source.path)), format)) {
        reason = "not an image file of a known format";
        return nullptr;
    }
    return m_reader.read_image(source.path, format, reason);
}
