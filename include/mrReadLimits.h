// Limits of what a reader takes of a file's images.
#pragma once

#include <cstdint>

/// The pixels that the images of one block may have together: so many, and so many more for each byte of the block,
/// up to 2^28 bytes; four bytes of memory each. A few bytes of a file can stand for very many pixels, so a caller may
/// allow less, down to none. Several very large images of one colour, which the library writes, need more. Limits below
/// 0 count as 0, those above 2^30 as 2^30.
struct mrReadLimits
{
    static constexpr std::int64_t default_pixels = std::int64_t{1} << 28;
    static constexpr std::int64_t default_pixels_per_byte = 64;

    std::int64_t pixels = default_pixels;
    std::int64_t pixels_per_byte = default_pixels_per_byte;
};
