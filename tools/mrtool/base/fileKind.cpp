#include "fileKind.h"

#include "mrImageCacheFile.h"
#include "mrTypes.h"

#include "gxOpenFile.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <cctype>

namespace mrtool {

namespace {

constexpr std::size_t beginning_length = 4096;

/// How files of a format begin. "?" stands for any byte.
struct Signature
{
    gxImageFileFormat format;
    std::string_view pattern;
};

using namespace std::string_view_literals;

constexpr Signature signatures[] = {
    {gxImageFilePNG, "\x89PNG\r\n\x1a\n"sv},
    {gxImageFileJPEG, "\xff\xd8\xff"sv},
    {gxImageFileTIFF, "II*\0"sv},
    {gxImageFileTIFF, "MM\0*"sv},
    {gxImageFileGIF, "GIF8"sv},
    {gxImageFileWebP, "RIFF"
                      "????"
                      "WEBP"sv},
    // With the reserved bytes, since many texts begin with these two letters.
    {gxImageFileBMP, "BM"
                     "????"
                     "\0\0\0\0"sv},
};

/// @return null when the beginning is no known one
Signature const* find_signature(std::string_view beginning)
{
    auto const found = std::find_if(std::begin(signatures), std::end(signatures), [=](Signature const& each) {
        return beginning.size() >= each.pattern.size() &&
               std::equal(each.pattern.begin(), each.pattern.end(), beginning.begin(),
                          [](char wanted, char byte) { return wanted == '?' || wanted == byte; });
    });
    return found == std::end(signatures) ? nullptr : found;
}

/// Whether "<multimat>" stands at the beginning of a line or behind a tag. Within a text, it is only mentioned.
bool opens_material(std::string_view beginning)
{
    constexpr std::string_view opening = "<multimat>";
    for (std::size_t at = beginning.find(opening); at != beginning.npos;
         at = beginning.find(opening, at + 1)) {
        std::size_t const before = beginning.substr(0, at).find_last_not_of(" \t");
        if (before == beginning.npos || "\n\r>"sv.find(beginning[before]) != beginning.npos)
            return true;
    }
    return false;
}

bool is_mesh_extension(std::string const& extension)
{
    // Kept, since making one makes all of Assimp's importers.
    static Assimp::Importer const importer;
    return importer.IsExtensionSupported("." + extension);
}

} // namespace

std::string extension_of(std::string const& path)
{
    char const* const extension = gxImageFileUtils::get_extension(path.c_str(), '.');
    std::string text = extension ? extension : "";
    for (char& letter : text)
        letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
    return text;
}

std::string read_beginning(std::string const& path)
{
    utString ignored;
    gxFile const file = gx_open_file(utString(path), ignored);
    return file ? read_beginning(file.get()) : std::string();
}

std::string read_beginning(std::FILE* file)
{
    std::string bytes(beginning_length, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return bytes;
}

gxImageFileFormat image_format(std::string_view beginning, gxImageFileFormat by_name)
{
    Signature const* const found = find_signature(beginning);
    return found ? found->format : by_name;
}

bool is_vague_extension(std::string_view extension)
{
    constexpr std::string_view vague[] = {"xml", "raw", "prj", "uc"};
    return std::find(std::begin(vague), std::end(vague), extension) != std::end(vague);
}

KnownFile detect_kind(std::string const& path)
{
    std::string const extension = extension_of(path);
    if (extension == "multimat")
        return {FileKind::material};
    std::string const beginning = read_beginning(path);
    if (Signature const* const image = find_signature(beginning))
        return {FileKind::image, image->format};
    if (opens_material(beginning))
        return {FileKind::material};
    gxImageFileFormat format = gxImageFilePNG;
    if (gxImageFileUtils::file_format_from_extension(utString(extension), format))
        return {FileKind::image, format};
    if (is_mesh_extension(extension))
        return {FileKind::mesh};
    return {};
}

bool is_palette(std::string_view beginning)
{
    constexpr std::string_view blank = " \r\n";
    std::size_t at = beginning.find_first_not_of(blank);
    while (at < beginning.size() && beginning[at] == '#')
        at = beginning.find_first_not_of(blank, beginning.find('\n', at));
    std::string_view const line = beginning.substr(std::min(at, beginning.size()));
    for (mrColourEncoding const encoding :
         {mrColourEncodingRgb8, mrColourEncodingCmy8, mrColourEncodingCmyk}) {
        utString keyword;
        mrTypes::print(encoding, keyword);
        if (line.starts_with(keyword.view()))
            return true;
    }
    return false;
}

OwnFormat detect_own_format(std::string const& path, std::string_view beginning)
{
    std::string const extension = extension_of(path);
    if (extension == "multimat" || opens_material(beginning))
        return OwnFormat::material;
    if (extension == "pcp" || is_palette(beginning))
        return OwnFormat::palette;
    bool const is_cache = mrCacheLine(beginning.substr(0, beginning.find('\n'))).two_integers;
    return is_cache ? OwnFormat::image_cache : OwnFormat::material;
}

} // namespace mrtool
