// Images as PNG streams in one file, by libpng alone: what the library's image blocks are measured beside.
#pragma once

#include "dgDuctImage.h"

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

/// Writes opaque images one after the other, without their names, as libpng does by default. Ends the program
/// where the file cannot be opened, and at libpng's errors.
void encode(std::vector<dgDuctImage const*> const& images, std::string const& path);

/// Reads what encode() wrote, four bytes a pixel.
std::vector<std::unique_ptr<unsigned char[]>> decode(std::string const& path, std::size_t count);
