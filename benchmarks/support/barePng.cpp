#include "barePng.h"

#include "table.h"

#include <png.h>

#include <cstdio>

namespace {

using File = std::unique_ptr<std::FILE, int (*)(std::FILE*)>;

File open(std::string const& path, char const* mode)
{
    File file(std::fopen(path.c_str(), mode), std::fclose);
    require(file != nullptr, "a file cannot be opened");
    return file;
}

void encode(dgDuctImage const& image, std::FILE* file)
{
    png_structp png = png_create_write_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_set_IHDR(png, info, static_cast<png_uint_32>(image.width()), static_cast<png_uint_32>(image.height()),
                 8, PNG_COLOR_TYPE_RGB, PNG_INTERLACE_NONE, PNG_COMPRESSION_TYPE_DEFAULT,
                 PNG_FILTER_TYPE_DEFAULT);
    png_write_info(png, info);
    png_set_filler(png, 0, PNG_FILLER_AFTER);
    std::size_t const row_bytes = image.byte_count() / static_cast<std::size_t>(image.height());
    for (std::size_t at = 0; at < image.byte_count(); at += row_bytes)
        png_write_row(png, image.pixels() + at);
    png_write_end(png, info);
    png_destroy_write_struct(&png, &info);
}

std::unique_ptr<unsigned char[]> decode(std::FILE* file)
{
    png_structp png = png_create_read_struct(PNG_LIBPNG_VER_STRING, nullptr, nullptr, nullptr);
    png_infop info = png_create_info_struct(png);
    png_init_io(png, file);
    png_read_info(png, info);
    png_set_add_alpha(png, 255, PNG_FILLER_AFTER);
    png_read_update_info(png, info);
    std::size_t const row_bytes = png_get_rowbytes(png, info);
    std::size_t const height = png_get_image_height(png, info);
    std::unique_ptr<unsigned char[]> image(new unsigned char[row_bytes * height]);
    for (std::size_t y = 0; y < height; ++y)
        png_read_row(png, image.get() + y * row_bytes, nullptr);
    png_read_end(png, info);
    png_destroy_read_struct(&png, &info, nullptr);
    return image;
}

} // namespace

void encode(std::vector<dgDuctImage const*> const& images, std::string const& path)
{
    File const file = open(path, "wb");
    for (dgDuctImage const* const image : images)
        encode(*image, file.get());
}

std::vector<std::unique_ptr<unsigned char[]>> decode(std::string const& path, std::size_t count)
{
    File const file = open(path, "rb");
    std::vector<std::unique_ptr<unsigned char[]>> images;
    while (images.size() < count)
        images.push_back(decode(file.get()));
    return images;
}
