// What a file is, by its content and its name.
#pragma once

#include "gxImageFileUtils.h"

#include <cstdio>
#include <string>
#include <string_view>

namespace mrtool {

enum class FileKind
{
    none,
    material,
    image,
    mesh
};

/// A file that can be read, and what it is.
struct KnownFile
{
    FileKind kind = FileKind::none;
    gxImageFileFormat format = gxImageFilePNG; ///< of an image
};

/// A file with the extension "multimat" is a material. Of others the content is believed first: one that begins
/// like a PNG, JPEG, TIFF, GIF, WebP or BMP image is an image, one with "<multimat>" at the beginning of a line or
/// behind a tag, in its first 4 KiB, a material. Then the name is: the extension of an image format makes an
/// image, one of Assimp's a mesh.
KnownFile file_kind(std::string const& path);

/// The library's own formats.
enum class OwnFormat
{
    material,
    palette,
    image_cache
};

/// Which of the formats a file with this beginning is to be read as. A material is one for its extension "multimat" or its
/// content, as above; then a palette one for its extension "pcp", or a first line with a colour; then an image
/// cache file one for a first line of two integers. Anything else is taken for a material, whose reader says
/// what it lacks.
OwnFormat own_format(std::string const& path, std::string_view beginning);

/// Whether a file with this beginning is a palette file: its first line that is neither empty nor a comment begins
/// with a keyword.
bool is_palette(std::string_view beginning);

/// Whether the extension, without the point and in any case, belongs to a format that can be no mesh just as
/// well. In a folder, files with it are left alone.
bool vague_extension(std::string_view extension);

} // namespace mrtool
