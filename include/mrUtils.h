// The images that follow a document in a file; colours out of their components.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"

#include <cstdint>

class giColour;
class utString;

/// Functions that need no object.
class MR_API mrUtils
{
public:
    /// What read_images takes of one block: so many pixels, and so many more for each byte of the block.
    static constexpr std::int64_t max_block_pixels = std::int64_t{1} << 28;
    static constexpr std::int64_t max_pixels_per_byte = 256;

    /// Appends the images of the table to a file, one PNG image after the other, each with two text entries:
    /// "Title", its key in the table, and "DuctImageName", its own name. Characters that XML cannot carry
    /// are written as "?", as in a document, so that a key stays that of the layers which name it.
    /// @return 1, or 0 at the first image that is null or cannot be written; those before it stay in the
    ///         file. An empty table touches no file
    static int write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, utString const& path);

    /// Reads the images that stand end to end from a position on to the end of the file. Fewer than ten bytes
    /// count as that end. Safe for untrusted input: see the constants above and gxPNGReaderDuctImage.
    ///
    /// An image is stored under its "Title", with one reference, which the table's owner releases; one of the
    /// same title gives way and is released. An image without a title is dropped.
    /// @param start  bytes from the beginning of the file
    /// @return 1, or 0 when the file cannot be opened or read, or something in it is no image or asks for too
    ///         many pixels or more memory than there is; the table keeps the images stored before
    static int read_images(utString const& path, int start,
                           utStringdgDuctImagecoTablePtrcoPtrcoTable& images);

    /// Works out a colour from the values of its encoding, in the order that mrColourEncoding names them,
    /// with a fourth byte of 0. No value is out of range: rgb8 and cmy8 values and the channels that cmyk values
    /// make are truncated towards zero (to 0 where that fits no int), then their low eight bits count.
    /// @report "Invalid format!" for mrColourEncodingNone, and then the last of these too
    /// @report "Expected 3 component values!" for rgb8 or cmy8 with another count; values beyond are left
    ///         out, those missing are 0, each with the report of coDList
    /// @report "Expected 4 component values!" for cmyk likewise; with black of exactly 100 the others are not
    ///         asked for
    /// @report "unknown enumerator constant | Invalid format!" for any other encoding; @p colour is untouched
    static void colour_from_components(mrColourEncoding encoding, doublecoDList& values, giColour& colour);
};
