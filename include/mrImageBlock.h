// The PNG images at the end of a material file or an image cache file.
#pragma once

#include "dgCounted.h"
#include "dgDuctImage.h"
#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"
#include "mrReadLimits.h"

#include <cstdint>
#include <cstdio>
#include <functional>

/// An image of a block.
struct mrBlockImage
{
    utString title; ///< its "Title", the name that texture layers use; empty if missing
    utString name;  ///< its "DuctImageName"; empty if missing
    int width = 0;
    int height = 0;
    std::int64_t byte = 0; ///< its position in the file
    dgCounted<dgDuctImage> image;
};

/// Walks over the images that stand end to end from a position to the end of a file. Safe for untrusted input: see
/// mrReadLimits and gxPNGReaderDuctImage.
class MR_API mrImageBlock
{
public:
    /// Keys of an image's text entries.
    static constexpr char title_key[] = "Title";
    static constexpr char name_key[] = "DuctImageName";
    /// The titles and names of all images may have as many bytes together as the block, and so many more. They can be
    /// compressed, to a thousandth.
    static constexpr std::int64_t max_inflated_texts = std::int64_t{1} << 21;
    /// How far images were written.
    enum class Written
    {
        all,
        not_all, ///< for the image or the file
        out_of_memory
    };
    /// Fewer bytes are the end of the block.
    static constexpr int fewest_bytes = 10;

    /// May throw std::bad_alloc, where the file cannot be read.
    /// @param file   borrowed
    /// @param start  bytes from the beginning of the file
    mrImageBlock(std::FILE* file, std::int64_t start, mrReadLimits const& limits = {});

    /// Reads the next image; a walk holds one at a time.
    /// @return 1, or 0 at the end of the block and at the first fault
    int read_next(mrBlockImage& image);

    /// Reads the remaining images and hands those with a title to @p store.
    /// @param store    returns whether the image replaced another of its title
    /// @param remarks  unless null, receives what was left out: images without a title, replaced images, bytes too few
    ///                 for an image
    /// @return 1 at the end of the block, 0 at the first fault
    int read_titled(std::function<bool(mrBlockImage&)> const& store, mrFaultcoDList* remarks = nullptr);

    /// Stores the remaining images in the table under their titles, with one reference on each, which the table's
    /// owner releases. Replaces and releases an image of the same title.
    /// @param remarks  as above
    /// @return 1, or 0 at the first fault; the table keeps the images stored before
    int read_into(utStringdgDuctImagecoTablePtrcoPtrcoTable& images, mrFaultcoDList* remarks = nullptr);

    /// Whether the file goes on with the signature of a PNG image.
    bool at_image();

    /// The fault that ended the walk: part "image 2", its byte, the reason. Without a reason while nothing is wrong.
    mrFault const& fault() const { return m_fault; }

    /// Whether each image would have a title of its own. Characters that XML cannot carry become their pictures
    /// (see xmlUtils::carried), so keys that differ may have one title: "\x01" and "\u2401", or an invalid and an
    /// empty one. In time linear in the number of images.
    /// @param fault  receives the two keys
    /// @return 1, or 0 when two would have the same or memory runs out
    static int check_titles(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, mrFault& fault);

    /// Appends images to a file, each with its own name and with its key in the table as title, in which control
    /// characters become their pictures as they do in a document: a title stays the name that layers use. A file is
    /// to be begun after check_titles() alone, since readers keep the last image of a title.
    /// @param fault  receives the image that cannot be written, and the reason
    /// @return how far: to the first image that is null or cannot be written; those before it stay
    static Written write(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, std::FILE* file,
                         mrFault& fault);

private:
    int read_image(mrBlockImage& image);
    std::size_t peek(char (&bytes)[fewest_bytes]);
    void fail(char const* reason) { m_fault = {reason}; }
    /// Notes the fault of the image that was read last.
    void refuse(utString const& reason, std::int64_t byte);

    std::FILE* m_file;
    std::int64_t m_pixels_left = 0; ///< still allowed
    std::int64_t m_texts_left = 0;  ///< bytes still allowed
    int m_number = 0;               ///< of the image read last, from 1
    std::size_t m_rest = 0;         ///< bytes left after the last image
    mrFault m_fault;
};
