// The images behind the document of a material file.
#pragma once

#include <string>
#include <vector>

namespace mrtool {

/// What stands from a position on to the end of a file.
struct ImageBlock
{
    /// Of the images in their order; empty for one that has none.
    std::vector<std::string> titles;
    /// Which image is none and why; empty when all are.
    std::string fault;
    /// Bytes behind the last image, too few for another.
    std::size_t rest = 0;
};

/// @param start  in bytes
ImageBlock read_image_block(std::string const& path, long start);

/// Whether an image begins at the position, as far as its first bytes tell.
bool image_begins_at(std::string const& path, long start);

} // namespace mrtool
