// PNG files put together by hand: kinds that the writer does not make, and broken ones.
#pragma once

#include <zlib.h>

#include <cstdint>
#include <string>

inline std::string big_endian(std::uint32_t value)
{
    std::string bytes;
    for (int shift = 24; shift >= 0; shift -= 8)
        bytes += static_cast<char>(value >> shift);
    return bytes;
}

/// A chunk of four letters and its data, with the checksum.
inline std::string chunk(std::string const& name, std::string const& data)
{
    std::string const body = name + data;
    auto const sum = crc32(0, reinterpret_cast<Bytef const*>(body.data()), static_cast<uInt>(body.size()));
    return big_endian(static_cast<std::uint32_t>(data.size())) + body +
           big_endian(static_cast<std::uint32_t>(sum));
}

inline std::string deflated(std::string const& bytes)
{
    uLongf size = compressBound(bytes.size());
    std::string packed(size, '\0');
    compress(reinterpret_cast<Bytef*>(packed.data()), &size, reinterpret_cast<Bytef const*>(bytes.data()),
             bytes.size());
    packed.resize(size);
    return packed;
}

struct RawPNG
{
    std::uint32_t width = 1;
    std::uint32_t height = 1;
    int depth = 8;
    int colour_type = 0; ///< 0 grey, 2 RGB, 3 palette, 4 grey and alpha, 6 RGBA
    bool interlaced = false;
    std::string before = "";   ///< whole chunks between the header and the pixels
    std::string rows = {0, 0}; ///< each a filter byte and its samples
    std::string after = "";    ///< whole chunks between the pixels and the end

    std::string bytes() const
    {
        std::string const header = big_endian(width) + big_endian(height) + static_cast<char>(depth) +
                                   static_cast<char>(colour_type) + std::string(2, '\0') +
                                   static_cast<char>(interlaced);
        return "\x89PNG\r\n\x1a\n" + chunk("IHDR", header) + before + chunk("IDAT", deflated(rows)) + after +
               chunk("IEND", "");
    }
};
