// Image files of all formats.
#pragma once

#include "dgDuctImage.h"
#include "utExport.h"
#include "utString.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

enum gxImageFileFormat
{
    gxImageFilePNG,
    gxImageFileJPEG,
    gxImageFileTIFF,
    gxImageFileGIF,
    gxImageFileBMP,
    gxImageFileTGA,
    gxImageFileICO,
    gxImageFilePNM,
    gxImageFileSVG,
    gxImageFileWebP ///< where a loader for it is installed
};

class UT_API gxImageFileUtils
{
public:
    /// An image that announces more pixels is refused before it is allocated.
    static constexpr std::int64_t max_pixels = dgDuctImage::max_pixels;
    /// An SVG is drawn at most this wide and high, in pixels, its aspect kept.
    static constexpr int max_svg_side = 2048;

    /// The part of the path's last component after the last @p separator in it, or null when there is none or
    /// nothing follows it. Points into @p path.
    static char const* get_extension(char const* path, char separator);

    /// @param extension  without the point, in any case: png jpg jpeg tif tiff gif bmp tga ico pnm pbm pgm
    ///                   ppm svg webp
    /// @return 1, or 0 with @p format untouched when no format has the extension
    static int file_format_from_extension(utString const& extension, gxImageFileFormat& format);

    /// Tells PNG, JPEG, TIFF, GIF, BMP and WebP files by their content.
    /// @param beginning  the first bytes of the file, 12 or more where it has them
    /// @return 1, or 0 with @p format untouched when they begin none of these
    static int file_format_from_content(std::string_view beginning, gxImageFileFormat& format);

    /// Reads an image file of the format; of an animation the first frame, turned upright where the file says
    /// how it was taken. PNG files are safe from strangers; what another format can do is bounded by what its
    /// loader does: read such files in a process of their own. A JPEG, BMP, ICO or PNM file that ends before
    /// its image does is refused, a GIF file may give the part that was there. What is no regular file is
    /// refused without being read. Nothing is written to standard error.
    /// @param reason  where not null, receives the reason for a failure, in words
    /// @return a new image without a name and without references, or null
    static dgDuctImage* read_image_file(utString const& path, gxImageFileFormat format,
                                        utString* reason = nullptr);

    /// The same of an open file, from its position on.
    /// @param file  borrowed
    static dgDuctImage* read_image_file(std::FILE* file, gxImageFileFormat format,
                                        utString* reason = nullptr);
};
