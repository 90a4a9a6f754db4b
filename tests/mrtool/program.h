// Running the program, and files to run it on.
#pragma once

#include "mrTest.h"

#include "dgCounted.h"

#include "dgDuctImage.h"
#include "giColour.h"

#include <cstddef>
#include <string>
#include <vector>

struct Outcome
{
    int status;
    std::string output;
    std::string errors;
};

/// Runs mrtool with arguments as a shell takes them.
/// Its standard input is empty unless the arguments redirect it.
/// @param before  shell commands that come before it, each with its ";"
/// @param output  where its output goes instead of to the Outcome
Outcome run_mrtool(std::string const& arguments, std::string const& before = {},
                   std::string const& output = {});

/// A picture of four colours: red, green over blue, white.
dgCounted<dgDuctImage> four_colours(int side = 8);

/// A PNG file of it, as the library puts it into a block of images; without title and name where @p title is
/// empty.
std::string png_bytes(dgDuctImage const& image, std::string const& title = {});

/// Writes a material file: a facet for each colour, the first with a layer of each image name.
void write_material(std::string const& path, std::vector<giColour> const& colours,
                    std::vector<std::string> const& layers = {}, std::vector<std::string> const& images = {});

dgCounted<dgDuctImage> read_png(std::string const& path);

/// How many files and folders are in it.
std::ptrdiff_t files_in(std::string const& folder);

/// The pixel as "red green blue".
std::string pixel(dgDuctImage const& image, int x, int y);
