#include "untrustedReader.h"

#include "fileKind.h"
#include "utConcat.h"
#include "wire.h"

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <sys/mman.h>
#include <unistd.h>

namespace mrtool {

namespace {

void take_block(WireReader& wire, giTriBlock& block)
{
    giBoxArrPoint3& nodes = gsTriUtils::check_out_nodes(block);
    wire.array<giPoint3>([&](giPoint3 const& node) { nodes.append(node); });
    giNormArr& normals = gsTriUtils::check_out_normals(block);
    wire.array<giVector3>([&](giVector3 const& normal) { normals.push_back(normal); });
    bool textured = false;
    wire(textured);
    if (textured) {
        giBoxArrPoint2& tus = gsTriUtils::check_out_tus(block);
        wire.array<giPoint2>([&](giPoint2 const& tu) { tus.append(tu); });
    }
    giTriArr& triangles = gsTriUtils::check_out_triangles(block);
    wire.array<giTri>([&](giTri const& triangle) { triangles.push_back(triangle); });
}

void take_meshes(WireReader& wire, Meshes& meshes)
{
    std::uint64_t count = 0;
    wire(count);
    for (; count > 0 && wire.ok(); --count) {
        meshes.blocks.append(new giTriBlock);
        take_block(wire, **std::prev(meshes.blocks.end()));
    }
}

dgCounted<dgDuctImage> made_of(int width, int height, std::string_view pixels)
{
    bool const sensible =
        width > 0 && height > 0 && std::int64_t{width} * height <= gxImageFileUtils::max_pixels;
    if (!sensible ||
        pixels.size() != std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        return nullptr;
    dgCounted<dgDuctImage> image = dg_hold(new dgDuctImage("", width, height));
    std::memcpy(image->pixels(), pixels.data(), pixels.size());
    return image;
}

/// The bytes as a file that only this process and its children see.
class MemoryFile
{
public:
    explicit MemoryFile(std::string const& bytes) : m_file(memfd_create("image", MFD_CLOEXEC))
    {
        std::size_t done = 0;
        while (m_file >= 0 && done < bytes.size()) {
            ssize_t const written = write(m_file, bytes.data() + done, bytes.size() - done);
            if (written < 0 && errno != EINTR)
                return;
            done += static_cast<std::size_t>(std::max<ssize_t>(written, 0));
        }
        m_good = m_file >= 0;
    }
    ~MemoryFile()
    {
        if (m_file >= 0)
            close(m_file);
    }
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    bool good() const { return m_good; }
    int file() const { return m_file; }
    std::string path() const { return ut_concat("/proc/self/fd/", m_file); }

private:
    int m_file;
    bool m_good = false;
};

dgCounted<dgDuctImage> png(std::string const& path, std::string& reason)
{
    utString why;
    dgCounted<dgDuctImage> image =
        dg_hold(gxImageFileUtils::read_image_file(utString(path), gxImageFilePNG, &why));
    if (!image)
        reason = std::string("not a readable image: ") + why.c_str();
    return image;
}

} // namespace

UntrustedReader::UntrustedReader(std::string program, ChildLimits const& limits)
    : m_program(std::move(program)), m_limits(limits)
{}

bool UntrustedReader::ask(std::string const& what, std::string const& path, int input, std::string& reason,
                          std::function<void(WireReader&)> const& take) const
{
    ChildResult const result = run_child({m_program, file_reader_argument, what, path}, m_limits, input);
    if (result.end != ChildEnd::finished || result.code != EXIT_SUCCESS) {
        reason = "reading it " + describe(result, m_limits);
        return false;
    }
    WireReader wire(result.output);
    bool there = false;
    wire(there);
    if (there)
        take(wire);
    else
        wire(reason);
    if (!wire.complete())
        reason = "reading it gave no sensible answer";
    return there && wire.complete();
}

bool UntrustedReader::meshes(std::string const& path, Meshes& meshes, std::string& reason) const
{
    return ask(meshes_wanted, path, -1, reason, [&](WireReader& wire) { take_meshes(wire, meshes); });
}

bool UntrustedReader::scene(std::string const& path, Scene& scene, std::string& reason) const
{
    return ask(scene_wanted, path, -1, reason, [&](WireReader& wire) { wire(scene); });
}

dgCounted<dgDuctImage> UntrustedReader::image_from_child(std::string const& path, gxImageFileFormat format,
                                                         int input, std::string& reason) const
{
    dgCounted<dgDuctImage> image;
    auto const take = [&](WireReader& wire) {
        int width = 0;
        int height = 0;
        std::string_view pixels;
        wire(width);
        wire(height);
        wire(pixels);
        image = made_of(width, height, pixels);
    };
    if (!ask(ut_concat(image_wanted, int{format}), path, input, reason, take))
        return nullptr;
    if (!image)
        reason = "reading it gave no sensible answer";
    return image;
}

dgCounted<dgDuctImage> UntrustedReader::image(std::string const& path, gxImageFileFormat format,
                                              std::string& reason) const
{
    gxImageFileFormat const by_content = image_format(read_beginning(path), format);
    return by_content == gxImageFilePNG ? png(path, reason) : image_from_child(path, by_content, -1, reason);
}

dgCounted<dgDuctImage> UntrustedReader::image(SceneImage const& image, std::string& reason) const
{
    if (image.width != 0) {
        dgCounted<dgDuctImage> pixels = made_of(image.width, image.height, image.bytes);
        if (!pixels)
            reason = "not a readable image: its size makes no sense";
        return pixels;
    }
    gxImageFileFormat by_name = gxImageFilePNG;
    gxImageFileUtils::file_format_from_extension(utString(image.extension), by_name);
    gxImageFileFormat const format = image_format(image.bytes, by_name);
    MemoryFile const file(image.bytes);
    if (!file.good()) {
        reason = std::string("no memory for it: ") + std::strerror(errno);
        return nullptr;
    }
    return format == gxImageFilePNG ? png(file.path(), reason)
                                    : image_from_child("/proc/self/fd/0", format, file.file(), reason);
}

} // namespace mrtool
