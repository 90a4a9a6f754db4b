#include "scReader.h"

#include "childProcess.h"
#include "readers.h"
#include "readHere.h"
#include "room.h"
#include "safely.h"
#include "sceneWire.h"

#include "gxFileHints.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <map>
#include <sys/mman.h>
#include <unistd.h>

using sc::because;
using sc::do_safely;
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
template <class T>
Expected<T> ask_child(scReadOptions const& options, std::string const& what, std::string const& path,
                      int input = -1)
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
    Expected<T> answer;
    wire(answer);
    if (!wire.complete())
        return because(no_sense);
    return answer;
}

/// The surfaces of a file, which are too many bytes for a pipe.
Expected<std::vector<scSurface>> ask_child_for_surfaces(scReadOptions const& options, std::string const& path)
{
    sandbox::Room room(options.memory);
    if (room.file() < 0)
        return because(ut_concat("no memory for it: ", std::strerror(errno)));
    Expected<std::uint64_t> const size =
        ask_child<std::uint64_t>(options, sc::surfaces_wanted, path, room.file());
    if (!size)
        return because(size.error());
    std::optional<std::string_view> const bytes = room.close(*size);
    if (!bytes)
        return because(no_sense);
    Expected<std::vector<scSurface>> answer;
    sandbox::WireReader wire(*bytes);
    wire(answer);
    if (!wire.complete())
        return because(no_sense);
    return answer;
}

/// @return whether there is a value; else @p value is unchanged
template <class T>
bool take(T& value, Expected<T> answer, std::string& reason)
{
    if (answer)
        value = std::move(*answer);
    else
        reason = std::move(answer.error());
    return answer.has_value();
}

/// Nobody but this process is asked for a PNG image.
/// @param file  the descriptor of a regular file
Expected<Image> read_image_of(scReadOptions const& options, int file, gxImageFileFormat format)
{
    utString reason;
    if (gxFile const stream = gx_open_descriptor(file, reason))
        gxImageFileUtils::file_format_from_content(gx_read_beginning(stream.get()), format);
    if (format == gxImageFilePNG || options.place == scReadHere)
        return sc::read_image_here(file, format);
    Expected<Image> image = ask_child<Image>(options, ut_concat(sc::image_wanted, int{format}), "-", file);
    if (image && !*image)
        return because(no_sense);
    return image;
}

/// The bytes as a file that only this process and its children see; null with errno on failure.
gxFile make_memory_file(std::string const& bytes)
{
    int const descriptor = memfd_create("image", MFD_CLOEXEC);
    gxFile file(descriptor < 0 ? nullptr : fdopen(descriptor, "wb"));
    bool const written = file && std::fwrite(bytes.data(), 1, bytes.size(), file.get()) == bytes.size() &&
                         std::fflush(file.get()) == 0;
    return written ? std::move(file) : nullptr;
}

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
    gxFile const file = make_memory_file(image.bytes);
    if (!file)
        return because(ut_concat("no memory for it: ", std::strerror(errno)));
    return read_image_of(options, fileno(file.get()), format);
}

/// Finds the material of each surface.
void find_materials(std::vector<scMaterial> const& materials, std::vector<scSurface>& surfaces)
{
    std::map<std::string_view, std::optional<std::size_t>> by_name;
    for (std::size_t at = 0; at < materials.size(); ++at) {
        auto const [known, first] = by_name.emplace(materials[at].name, at);
        if (!first)
            known->second.reset();
    }
    for (scSurface& surface : surfaces) {
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
    return do_safely(reason, [&] {
        scScene read;
        if (!take(read,
                  m_options.place == scReadHere ? sc::read_materials_here(path)
                                                : ask_child<scScene>(m_options, sc::materials_wanted, path),
                  reason))
            return false;
        read.path = path;
        find_materials(read.materials, scene.surfaces);
        read.surfaces = std::move(scene.surfaces);
        scene = std::move(read);
        return true;
    });
}

bool scReader::read_surfaces(std::string const& path, scScene& scene, std::string& reason) const
{
    return do_safely(reason, [&] {
        std::vector<scSurface> read;
        if (!take(read,
                  m_options.place == scReadHere ? sc::read_surfaces_here(path)
                                                : ask_child_for_surfaces(m_options, path),
                  reason))
            return false;
        find_materials(scene.materials, read);
        scene.path = path;
        scene.surfaces = std::move(read);
        return true;
    });
}

Image scReader::read_image(std::string const& path, gxImageFileFormat format, std::string& reason) const
{
    Image read;
    do_safely(reason, [&] {
        utString why_not;
        gxDescriptor const file = gx_open_regular(utString(path), why_not);
        if (!file)
            reason = ut_concat("not a readable image: the file cannot be opened: ", why_not);
        return file && take(read, read_image_of(m_options, file.get(), format), reason);
    });
    return read;
}

Image scReader::read_image(scImage const& image, std::string& reason) const
{
    Image read;
    do_safely(reason, [&] { return take(read, read_embedded(m_options, image), reason); });
    return read;
}

std::vector<std::string> scReader::containment() const
{
    std::vector<std::string> words;
    std::string ignored;
    do_safely(ignored, [&] {
        return take(words, ask_child<std::vector<std::string>>(m_options, sc::containment_wanted, "-"),
                    ignored);
    });
    return words;
}

bool scReader::knows_extension(std::string const& extension)
{
    std::string ignored;
    return do_safely(ignored, [&] { return sc::assimp_knows(extension); });
}

bool scReader::knows_beginning(std::string_view beginning)
{
    return sc::is_m3d(beginning);
}
