#include "fileKind.h"

#include "mrImageCacheFile.h"
#include "mrTypes.h"

#include "gxOpenFile.h"

#include <algorithm>
#include <assimp/Importer.hpp>
#include <cctype>
#include <set>

namespace mrtool {

namespace {

constexpr std::size_t beginning_length = 4096;

struct Bytes
{
    std::size_t at;
    std::string_view bytes;

    bool stand_in(std::string_view beginning) const
    {
        return beginning.size() >= at && beginning.substr(at).starts_with(bytes);
    }
};

struct Signature
{
    gxImageFileFormat format;
    Bytes first;
    Bytes second = {0, {}};
};

using namespace std::string_view_literals;

constexpr Signature signatures[] = {
    {gxImageFilePNG, {0, "\x89PNG\r\n\x1a\n"sv}},
    {gxImageFileJPEG, {0, "\xff\xd8\xff"sv}},
    {gxImageFileTIFF, {0, "II*\0"sv}},
    {gxImageFileTIFF, {0, "MM\0*"sv}},
    {gxImageFileGIF, {0, "GIF8"sv}},
    {gxImageFileWebP, {0, "RIFF"sv}, {8, "WEBP"sv}},
    // The reserved bytes: two letters alone begin many a text.
    {gxImageFileBMP, {0, "BM"sv}, {6, "\0\0\0\0"sv}},
};

Signature const* signature_of(std::string_view beginning)
{
    auto const fits = [=](Signature const& each) {
        return each.first.stand_in(beginning) && each.second.stand_in(beginning);
    };
    auto const found = std::find_if(std::begin(signatures), std::end(signatures), fits);
    return found == std::end(signatures) ? nullptr : found;
}

/// Whether a document begins where a line or another tag leaves off; one that is spoken of in a text does not.
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
    Signature const* const found = signature_of(beginning);
    return found ? found->format : by_name;
}

bool vague_extension(std::string_view extension)
{
    constexpr std::string_view vague[] = {"xml", "raw", "prj", "uc"};
    return std::find(std::begin(vague), std::end(vague), extension) != std::end(vague);
}

KnownFile file_kind(std::string const& path)
{
    std::string const extension = extension_of(path);
    if (extension == "multimat")
        return {FileKind::material};
    std::string const beginning = read_beginning(path);
    if (Signature const* const image = signature_of(beginning))
        return {FileKind::image, image->format};
    if (opens_material(beginning))
        return {FileKind::material};
    gxImageFileFormat format = gxImageFilePNG;
    if (gxImageFileUtils::file_format_from_extension(utString(extension), format))
        return {FileKind::image, format};
    if (mesh_extensions().contains(extension))
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
    for (mrColourEncoding const encoding : {mrColourEncodingRgb8, mrColourEncodingCmy8, mrColourEncodingCmyk})
        if (line.starts_with(mrTypes::find_word(encoding).view()))
            return true;
    return false;
}

OwnFormat own_format(std::string const& path, std::string_view beginning)
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
