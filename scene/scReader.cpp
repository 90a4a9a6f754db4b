#include "scReader.h"

#include "assimpReader.h"
#include "childProcess.h"
#include "readerChild.h"
#include "readHere.h"
#include "sceneWire.h"
#include "utConcat.h"

#include "gxFileHints.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <exception>
#include <filesystem>
#include <map>
#include <new>
#include <sys/mman.h>
#include <unistd.h>

using sc::because;
using sc::Expected;

namespace {

using Image = dgCounted<dgDuctImage>;

constexpr char no_sense[] = "reading it gave no sensible answer";

/// The helper beside this library: in the same place when installed and where both were built.
std::string find_helper()
{
    Dl_info library;
    if (!dladdr(reinterpret_cast<void const*>(&find_helper), &library))
        return SC_HELPER;
    std::error_code failed;
    auto const path = std::filesystem::canonical(library.dli_fname, failed);
    return (path.parent_path() / SC_HELPER).string();
}

/// Has a child read a file.
/// @param read  reads a T off the wire
template <class T, class Read>
Expected<T> ask_child(scReadOptions const& options, std::string const& what, std::string const& path,
                      Read read, int input = -1)
{
    sandbox::ChildLimits limits;
    limits.time = options.time;
    limits.memory = options.memory;
    sandbox::ChildResult const result = run_child({options.helper, what, path}, limits, input);
    if (result.end == sandbox::ChildEnd::not_started)
        return because(
            ut_concat("the program ", options.helper,
                      ", which reads files for others, does not start: ", std::strerror(result.code)));
    if (result.end != sandbox::ChildEnd::finished || result.code != EXIT_SUCCESS)
        return because("reading it " + describe(result, limits));
    sandbox::WireReader wire(result.output);
    bool there = false;
    wire(there);
    Expected<T> answer = because("");
    if (there)
        answer = read(wire);
    else
        wire(answer.error());
    if (!wire.complete())
        return because(no_sense);
    return answer;
}

/// What a reader in this process throws is a reason too.
template <class T, class Read>
Expected<T> read_safely(Read read)
{
    try {
        return read();
    } catch (std::bad_alloc const&) {
        return because("not enough memory");
    } catch (std::exception const& error) {
        return because(error.what());
    }
}

/// Hands a value on, or the reason why there is none.
template <class T, class Use>
bool use(Expected<T>&& read, std::string& reason, Use use_value)
{
    if (read)
        use_value(std::move(*read));
    else
        reason = std::move(read.error());
    return read.has_value();
}

Image take_image(Expected<Image>&& read, std::string& reason)
{
    Image image;
    use(std::move(read), reason, [&](Image&& there) { image = std::move(there); });
    return image;
}

/// @return null when the size and the pixels do not fit each other
Image make_image(int width, int height, std::string_view pixels)
{
    bool const sensible =
        width > 0 && height > 0 && std::int64_t{width} * height <= gxImageFileUtils::max_pixels;
    if (!sensible ||
        pixels.size() != std::size_t{4} * static_cast<std::size_t>(width) * static_cast<std::size_t>(height))
        return nullptr;
    Image image = dg_hold(new dgDuctImage("", width, height));
    std::memcpy(image->pixels(), pixels.data(), pixels.size());
    return image;
}

Expected<Image> read_answered_image(sandbox::WireReader& wire)
{
    int width = 0;
    int height = 0;
    std::string_view pixels;
    wire(width);
    wire(height);
    wire(pixels);
    Image image = make_image(width, height, pixels);
    if (!image)
        return because(no_sense);
    return image;
}

/// Nobody but this process is asked for a PNG image.
Expected<Image> read_image_of(scReadOptions const& options, std::string const& path, gxImageFileFormat format,
                              int input = -1)
{
    if (format == gxImageFilePNG || options.place == scReadHere)
        return sc::read_image_here(path, format);
    return ask_child<Image>(options, ut_concat(sc::image_wanted, int{format}),
                            input < 0 ? path : "/proc/self/fd/0", read_answered_image, input);
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

Expected<Image> read_embedded(scReadOptions const& options, scImage const& image)
{
    if (image.width != 0) {
        Image pixels = make_image(image.width, image.height, image.bytes);
        if (!pixels)
            return because("not a readable image: its size makes no sense");
        return pixels;
    }
    gxImageFileFormat format = gxImageFilePNG;
    gxImageFileUtils::file_format_from_extension(utString(image.extension), format);
    gxImageFileUtils::file_format_from_content(image.bytes, format);
    MemoryFile const file(image.bytes);
    if (!file.good())
        return because(ut_concat("no memory for it: ", std::strerror(errno)));
    // From its beginning: the child opens what it inherits anew.
    return read_image_of(options, file.path(), format, file.file());
}

void find_materials(scScene& scene)
{
    std::map<std::string_view, std::optional<std::size_t>> by_name;
    for (std::size_t at = 0; at < scene.materials.size(); ++at) {
        auto const [known, first] = by_name.emplace(scene.materials[at].name, at);
        if (!first)
            known->second.reset();
    }
    for (scSurface& surface : scene.surfaces) {
        auto const found = by_name.find(surface.material_name);
        surface.material = found == by_name.end() ? std::nullopt : found->second;
    }
}

} // namespace

scReader::scReader(scReadOptions options) : m_options(std::move(options))
{
    if (m_options.helper.empty())
        m_options.helper = find_helper();
}

bool scReader::read_materials(std::string const& path, scScene& scene, std::string& reason) const
{
    auto read = read_safely<scScene>([&]() -> Expected<scScene> {
        if (m_options.place == scReadHere)
            return sc::read_materials_here(path);
        return ask_child<scScene>(m_options, sc::materials_wanted, path, [](sandbox::WireReader& wire) {
            scScene answered;
            wire(answered);
            return answered;
        });
    });
    return use(std::move(read), reason, [&](scScene&& there) {
        there.path = path;
        there.surfaces = std::move(scene.surfaces);
        scene = std::move(there);
        find_materials(scene);
    });
}

bool scReader::read_surfaces(std::string const& path, scScene& scene, std::string& reason) const
{
    using Surfaces = std::vector<scSurface>;
    auto read = read_safely<Surfaces>([&]() -> Expected<Surfaces> {
        if (m_options.place == scReadHere)
            return sc::read_surfaces_here(path);
        return ask_child<Surfaces>(m_options, sc::surfaces_wanted, path, [](sandbox::WireReader& wire) {
            Surfaces answered;
            wire(answered);
            return answered;
        });
    });
    return use(std::move(read), reason, [&](Surfaces&& there) {
        scene.path = path;
        scene.surfaces = std::move(there);
        find_materials(scene);
    });
}

Image scReader::read_image(std::string const& path, gxImageFileFormat format, std::string& reason) const
{
    gxImageFileUtils::file_format_from_content(gx_read_beginning(path), format);
    return take_image(read_safely<Image>([&] { return read_image_of(m_options, path, format); }), reason);
}

Image scReader::read_image(scImage const& image, std::string& reason) const
{
    return take_image(read_safely<Image>([&] { return read_embedded(m_options, image); }), reason);
}

bool scReader::knows_extension(std::string const& extension)
{
    return sc::assimp_knows(extension);
}
