// Reading and writing a material file with four textures, beside libpng alone.
#include "support/material.h"
#include "support/peak.h"
#include "support/table.h"

#include <png.h>

#include <cstdio>
#include <vector>

namespace {

constexpr int textures = 4;
constexpr int side = 1024;
constexpr std::size_t row_bytes = std::size_t{side} * 4;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open(std::string const& path, char const* mode)
{
    File file(std::fopen(path.c_str(), mode), std::fclose);
    require(file != nullptr, "a file cannot be opened");
    return file;
}

/// The four images as libpng writes them by default, and nothing else: libpng's errors end the program.
void encode(mrFileMat const& material, std::string const& path)
{
    File const file = open(path, "wb");
    for (auto const& [name, image] : material.images()) {
        png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, file.get());
        png_set_IHDR(png, info, side, side, 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE,
                     PNG_COMPRESSION_TYPE_DEFAULT, PNG_FILTER_TYPE_DEFAULT);
        png_write_info(png, info);
        png_set_filler(png, 0, PNG_FILLER_AFTER);
        for (std::size_t y = 0; y < side; ++y)
            png_write_row(png, image->pixels() + y * row_bytes);
        png_write_end(png, info);
        png_destroy_write_struct(&png, &info);
    }
}

std::vector<std::unique_ptr<unsigned char[]>> decode(std::string const& path)
{
    File const file = open(path, "rb");
    std::vector<std::unique_ptr<unsigned char[]>> images;
    for (int i = 0; i < textures; ++i) {
        png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
        png_infop info = png_create_info_struct(png);
        png_init_io(png, file.get());
        png_read_info(png, info);
        png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
        png_read_update_info(png, info);
        images.emplace_back(new unsigned char[row_bytes * side]);
        for (std::size_t y = 0; y < side; ++y)
            png_read_row(png, images.back().get() + y * row_bytes, nullptr);
        png_read_end(png, info);
        png_destroy_read_struct(&png, &info, nullptr);
    }
    return images;
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    WorkFolder const folder;
    std::string const ours = folder.file("four.multimat");
    std::string const theirs = folder.file("four.png");
    std::unique_ptr<mrFileMat> const written = material(textures, side);
    auto const write = [&] { require(written->write(utString(ours)), "the material cannot be written"); };
    auto const read = [&] {
        mrFileMat material;
        require(material.read(utString(ours)) == mrFileMatReadOK, "the material cannot be read");
    };
    write();
    encode(*written, theirs);

    double const pixels = 4.0 * side * side * textures;
    table.size("peak memory of a process that reads a material file with four 1024² textures",
               peak_of_reading(ours), 1.3 * pixels + (16 << 20));
    table.compare("read a material file with four 1024² textures", read,
                  {"libpng's rows", [&] { decode(theirs); }}, 1.10);
    table.compare("write it", write, {"libpng", [&] { encode(*written, theirs); }}, 1.10);
}
