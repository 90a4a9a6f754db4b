// The readers of files from strangers, each with what becomes of a file in words.
#pragma once

#include "mrTest.h"

#include <cstdint>
#include <string>

/// "read", or why not, without the place.
std::string parse_document(std::string const& text);
/// "open failed", "read", "no document" or "bad content".
std::string read_material(std::string const& path);
/// "open failed", "read" or "bad content", and "N entries" in the end, of a cache that had one before, or "an
/// entry lost" where the file was not read.
std::string read_cache(std::string const& path);
/// "open failed", "read", "bad format", "duplicate name" or "out of range", and "N colours" in the end.
std::string read_palette(std::string const& path);
/// "N images" or "N images, then none"; reads from the start of the file.
std::string read_block(std::string const& path);
/// "WIDTH x HEIGHT", and in quotes the title where there is one, or why there is no image.
std::string read_png(std::string const& path);

std::string repeated(std::string const& unit, int count);

class HostileFile : public testing::Test
{
protected:
    /// Reads a file of the bytes under the limits that they and the pixels give.
    void expect(std::string const& title, std::string const& bytes, std::string (*reader)(std::string const&),
                std::string const& outcome, std::int64_t pixels = 0) const;

    TestFolder const folder;
    std::string const path = folder.path("hostile");
};
