#include "fileKind.h"

#include "scReader.h"

#include "mrUtils.h"

#include "gxFileHints.h"

#include <algorithm>

namespace mrtool {

using namespace std::string_view_literals;

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

KnownFile detect_kind(std::string const& path)
{
    std::string const extension = gx_extension(path);
    if (extension == "multimat")
        return {FileKind::material};
    std::string const beginning = gx_read_beginning(path);
    gxImageFileFormat format = gxImageFilePNG;
    if (gxImageFileUtils::file_format_from_content(beginning, format))
        return {FileKind::image, format};
    if (opens_material(beginning))
        return {FileKind::material};
    if (gxImageFileUtils::file_format_from_extension(utString(extension), format))
        return {FileKind::image, format};
    if (scReader::knows_extension(extension) || scReader::knows_beginning(beginning))
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
        if (line.starts_with(mrUtils::find_palette_keyword(encoding)))
            return true;
    return false;
}

} // namespace mrtool
