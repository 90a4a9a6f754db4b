// The images at the end of a material file or an image cache file.
#pragma once

#include <string>
#include <vector>

namespace mrtool {

/// What is told of an image, without its pixels. Title and name are empty where it has none.
struct BlockImage
{
    std::string title;
    std::string name;
    int width = 0;
    int height = 0;
};

/// What stands from a position on to the end of a file.
struct ImageBlock
{
    /// In their order, up to one that is none.
    std::vector<BlockImage> images;
    /// Which image is none and why; empty when all are.
    std::string fault;
    /// Bytes behind the last image, too few for another.
    std::size_t rest = 0;
};

/// Reads the images with the library's limits, one at a time.
/// @param start  in bytes
ImageBlock read_image_block(std::string const& path, long start);

/// Adds to the warnings what the library passes over in a block: images without a title, the earlier of two
/// with one title, bytes at the end.
void check_images(ImageBlock const& block, std::vector<std::string>& warnings);

/// Whether an image begins at the position, as far as its first bytes tell.
bool image_begins_at(std::string const& path, long start);

} // namespace mrtool
