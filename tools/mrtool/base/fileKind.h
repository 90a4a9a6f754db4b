// The kind of a file, by its content and its name.
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
/// beginning of a line or behind a tag a material. Then the name decides: an extension of an image format makes an
/// image, one of Assimp's a mesh. So does the beginning of a file of M3D.
KnownFile detect_kind(std::string const& path);

/// Whether "<multimat>" stands at the beginning of a line or behind a tag. Within a text, it is only mentioned.
bool opens_material(std::string_view beginning);

/// Whether the first line that is neither empty nor a comment begins with a palette's keyword.
bool is_palette(std::string_view beginning);

} // namespace mrtool
