#include "fileKind.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <set>

namespace mrtool {

namespace {

constexpr std::size_t beginning_length = 4096;

struct Signature
{
    std::size_t at;
    std::string_view bytes;
    gxImageFileFormat format;
};

using namespace std::string_view_literals;

constexpr Signature signatures[] = {
    {0, "\x89PNG\r\n\x1a\n"sv, gxImageFilePNG},
    {0, "\xff\xd8\xff"sv, gxImageFileJPEG},
    {0, "II*\0"sv, gxImageFileTIFF},
    {0, "MM\0*"sv, gxImageFileTIFF},
    {0, "GIF8"sv, gxImageFileGIF},
    {8, "WEBP"sv, gxImageFileWebP},
};

std::string lower(std::string text)
{
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

/// Assimp's extensions, without the point. Asking it once is as dear as making all its importers.
std::set<std::string> const& mesh_extensions()
{
    static std::set<std::string> const extensions = [] {
        std::set<std::string> found;
        aiString list;
        Assimp::Importer().GetExtensionList(list);
        std::string_view left = list.C_Str();
        while (!left.empty()) {
            std::string_view const entry = left.substr(0, left.find(';'));
            found.emplace(entry.substr(entry.rfind('.') + 1));
            left.remove_prefix(std::min(entry.size() + 1, left.size()));
        }
        return found;
    }();
    return extensions;
}

} // namespace

std::string extension_of(std::string const& path)
{
    char const* const extension = gxImageFileUtils::get_extension(path.c_str(), '.');
    return lower(extension ? extension : "");
}

std::string read_beginning(std::string const& path)
{
    std::error_code ignored;
    // Opening anything but a file could wait for ever.
    if (!std::filesystem::is_regular_file(path, ignored))
        return {};
    std::string bytes(beginning_length, '\0');
    std::ifstream in(path, std::ios::binary);
    in.read(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    bytes.resize(static_cast<std::size_t>(in.gcount()));
    return bytes;
}

gxImageFileFormat image_format(std::string_view beginning, gxImageFileFormat by_name)
{
    auto const fits = [=](Signature const& each) {
        return beginning.size() > each.at && beginning.substr(each.at).starts_with(each.bytes);
    };
    auto const found = std::find_if(std::begin(signatures), std::end(signatures), fits);
    return found == std::end(signatures) ? by_name : found->format;
}

bool vague_extension(std::string_view extension)
{
    constexpr std::string_view vague[] = {"xml", "raw", "prj", "uc"};
    return std::find(std::begin(vague), std::end(vague), extension) != std::end(vague);
}

KnownFile file_kind(std::string const& path)
{
    std::string const extension = extension_of(path);
    std::string const beginning = read_beginning(path);
    if (extension == "multimat" || beginning.find("<multimat>") != beginning.npos)
        return {FileKind::material};
    gxImageFileFormat format = gxImageFilePNG;
    if (beginning.starts_with(signatures[0].bytes))
        return {FileKind::image, format};
    if (gxImageFileUtils::file_format_from_extension(utString(extension), format))
        return {FileKind::image, image_format(beginning, format)};
    if (mesh_extensions().contains(extension))
        return {FileKind::mesh};
    return {};
}

} // namespace mrtool
