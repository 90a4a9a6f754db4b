// What kind a file is, by its content and its name.
#pragma once

#include "gxImageFileUtils.h"

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

struct KnownFile
{
    FileKind kind = FileKind::none;
    gxImageFileFormat format = gxImageFilePNG; ///< of an image
};

/// Detects what a thumbnail can be made of. The extension "multimat" makes a material. Otherwise the content
/// decides first: the signature of a PNG, JPEG, TIFF, GIF, WebP or BMP file makes an image, "<multimat>" at the
/// beginning of a line or behind a tag a material. Then the name decides: an extension of an image format makes an image, one of Assimp's a mesh.
KnownFile detect_kind(std::string const& path);

/// The library's own formats.
enum class OwnFormat
{
    material,
    palette,
    image_cache
};

/// Detects the format that a file is to be read as. A material has the extension "multimat" or the beginning of one;
/// a palette the extension "pcp" or is_palette(); an image cache file a first line of two integers. Anything else
/// is taken for a material, whose reader says what it lacks.
OwnFormat detect_own_format(std::string const& path, std::string_view beginning);

/// Whether the first line that is neither empty nor a comment begins with a palette's keyword.
bool is_palette(std::string_view beginning);

/// Whether files with the extension (without the point, in lower case) are often no meshes although Assimp reads
/// the format. They are not looked for in folders.
bool is_vague_extension(std::string_view extension);

} // namespace mrtool
