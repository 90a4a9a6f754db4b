// The run of PNG images that ends a material file or an image cache file.
#pragma once

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"

#include <cstdint>
#include <cstdio>
#include <functional>

/// What a reader takes of the images of one block: so many pixels together, and so many more for each byte of the
/// block. A few bytes can stand for very many pixels; a caller may allow less.
struct mrReadLimits
{
    static constexpr std::int64_t default_pixels = std::int64_t{1} << 28;
    static constexpr std::int64_t default_pixels_per_byte = 256;

    std::int64_t pixels = default_pixels;
    std::int64_t pixels_per_byte = default_pixels_per_byte;
};

/// An image as it stands in a block.
struct mrBlockImage
{
    utString title; ///< its "Title", the name that texture layers use; empty when it has none
    utString name;  ///< its "DuctImageName"; empty when it has none
    int width = 0;
    int height = 0;
    std::int64_t byte = 0; ///< where it begins in the file
    /// Its pixels, under that name; whoever does not need them lets go of them.
    dgCounted<dgDuctImage> image;
};

/// Walks over the images that stand end to end from a position on to the end of a file: the one description of that
/// format. Safe for untrusted input: see mrReadLimits and gxPNGReaderDuctImage.
class MR_API mrImageBlock
{
public:
    /// Keys of an image's text entries.
    static constexpr char title_key[] = "Title";
    static constexpr char name_key[] = "DuctImageName";
    /// With fewer bytes left there is no further image.
    static constexpr int fewest_bytes = 10;

    /// @param file   borrowed
    /// @param start  bytes from the beginning of the file
    mrImageBlock(std::FILE* file, std::int64_t start, mrReadLimits const& limits = {});

    /// Reads the next image; a walk holds one at a time.
    /// @return 1, or 0 at the end of the block and at the first fault
    int read_next(mrBlockImage& image);

    /// Reads all images that are left, and hands those with a title to @p store.
    /// @param store    returns whether the image took the place of another of its title
    /// @param remarks  where not null, receives what is passed over: images without a title, those whose place
    ///                 another took, bytes too few for an image
    /// @return 1 at the end of the block, 0 at the first fault
    int read_titled(std::function<bool(mrBlockImage&)> const& store, mrFaultcoDList* remarks = nullptr);

    /// Reads all images that are left into the table, under their titles, with a reference on each, which the table's
    /// owner releases. One of the same title gives way and is released.
    /// @return 1, or 0 at the first fault; the table keeps the images stored before
    int read_into(utStringdgDuctImagecoTablePtrcoPtrcoTable& images, mrFaultcoDList* remarks = nullptr);

    /// Whether a PNG image stands at the present position, as far as its first bytes tell.
    bool at_image();

    /// Why the walk ended before the end of the block: part "image 2", its byte, the reason. Without a reason while
    /// nothing is wrong.
    mrFault const& fault() const { return m_fault; }

    /// Appends images to a file, one after the other, each with its key in the table as title and with its own name.
    /// Control characters that XML cannot carry are written as in a document, so that a title stays the name that
    /// layers use.
    /// @param fault  receives which image cannot be written, and why
    /// @return 1, or 0 at the first image that is null or cannot be written; those before it stay
    static int write(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, std::FILE* file,
                     mrFault& fault);

private:
    std::size_t peek(char (&bytes)[fewest_bytes]);
    int fail(char const* reason);

    std::FILE* m_file;
    std::int64_t m_budget = 0; ///< pixels that may still come
    int m_number = 0;          ///< of images read
    std::size_t m_rest = 0;    ///< bytes behind the last image
    mrFault m_fault;
};
