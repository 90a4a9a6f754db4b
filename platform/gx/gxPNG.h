// PNG images at the current position of a file.
#pragma once

#include "coTable.h"
#include "dgDuctImage.h"
#include "utExport.h"
#include "utString.h"

#include <cstdint>
#include <cstdio>
#include <string_view>

/// From the key of a text entry to its text.
using utStringutStringcoTable = coTable<utString, utString>;

/// Reads PNG images. Safe for untrusted input.
class UT_API gxPNGReaderDuctImage
{
public:
    /// The bytes that every PNG image begins with.
    static constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
    /// An image of more pixels is refused.
    static constexpr std::int64_t max_pixels = std::int64_t{1} << 28;
    /// An image wider or higher is refused: decoding takes up to sixteen bytes for each pixel of a row.
    static constexpr int max_side = 1'000'000;
    /// Text entries of an image that are looked at; further ones are passed over.
    static constexpr int max_texts = 64;
    /// Bytes that one text entry may hold once inflated; a longer one is passed over.
    static constexpr int max_text_bytes = 1 << 20;
    /// The most bytes that deflate can make of one.
    static constexpr std::int64_t max_inflation = 1032;
    /// Compressed bytes that are read for an image's last row at the most: so many for each pixel of its
    /// width, and so many more. An image with more is refused: what follows the pixels would be inflated
    /// for nothing. A pixel has up to eight bytes and a byte takes up to nine bits; the rest is for what
    /// deflate puts beside them.
    static constexpr std::int64_t max_last_row_bytes_a_pixel = 9;
    static constexpr std::int64_t max_last_row_surplus = 2048;

    /// Reads exactly one PNG image of any kind (palette, grey, 16 bit, interlaced, with or without alpha)
    /// from the file's position, which is just past the image's last chunk afterwards.
    ///
    /// Before any pixel is allocated, an image is refused that has a side above max_side, more than @p pixel_limit
    /// pixels, or more than the bytes left in the file could inflate to; so is any image of a stream that cannot seek. A bad
    /// checksum in an ancillary chunk is passed over and its content used; in a critical chunk, or when the
    /// file ends before the image, or its compressed pixels go on past its last row, the image is refused; but a
    /// surplus within the two limits above is passed over.
    /// Ancillary chunks other than texts and transparency (colour profiles, gamma, orientation) are passed
    /// over. Beside the image's pixels, reading takes memory for its largest chunk, its texts and two of its
    /// rows.
    ///
    /// @param texts        receives the text entries (tEXt, zTXt, iTXt), bytes as they are; of two with the
    ///                     same key the later one. Unchanged on failure
    /// @param pixel_limit  at most max_pixels
    /// @param reason       where not null, receives the reason for a failure, in words
    /// @return a new image without a name and without references, or null
    static dgDuctImage* read_file(std::FILE* file, utStringutStringcoTable& texts,
                                  std::int64_t pixel_limit = max_pixels, utString* reason = nullptr);
};

/// Writes PNG images.
class UT_API gxPNGWriterDuctImage
{
public:
    /// Whether an image and its texts can be written. The image has pixels, and no more of them than the reader takes;
    /// there are no more texts than it looks at. A keyword is 1 to 79 printable ASCII characters, no blank at either
    /// end and no two in a row. A text has no NUL and at most gxPNGReaderDuctImage::max_text_bytes bytes.
    static bool can_write(dgDuctImage const& image, utStringutStringcoTable const& texts);

    /// Writes one complete PNG image at the file's position: 8 bits a component, without alpha when every
    /// pixel is opaque. What was written has been handed to the system when the call returns.
    ///
    /// Whatever is written reads back with gxPNGReaderDuctImage, pixels and texts byte for byte.
    ///
    /// @param texts  the text entries. A text of plain ASCII becomes a tEXt entry, other UTF-8 an iTXt one,
    ///               anything else a tEXt with its bytes as they are; an invalid text is written as an empty one
    /// @return 1, or 0 with nothing written unless can_write(), or 0 when the file takes no more, which is an error of
    ///         it from then on, or when there is not enough memory
    static int write_file(dgDuctImage const& image, std::FILE* file, utStringutStringcoTable const& texts);
};
