#include "mrUtils.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "gxOpenFile.h"
#include "gxPNG.h"
#include "ntFileOps.h"
#include "utAssert.h"
#include "utString.h"
#include "xmlUtils.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <memory>
#include <new>
#include <utility>

namespace {

utString const title_key = "Title";
utString const image_name_key = "DuctImageName";

/// Fewer bytes than these are the end of a block.
constexpr std::size_t probe_size = 10;

int append_image(utString const& key, dgDuctImage const* image, utString const& path)
{
    gxFile file(std::fopen(path.c_str(), "ab"));
    if (!file || !image)
        return 0;
    utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
    texts[title_key] = xmlUtils::carried(key);
    texts[image_name_key] = xmlUtils::carried(image->name());
    if (!gxPNGWriterDuctImage::write_file(*image, file.get(), texts))
        return 0;
    // What the file takes no more may show on closing only.
    return std::fclose(file.release()) == 0;
}

/// How many pixels the images from @p start to the end of the file may have, with the file left at start.
/// @return -1 when the file has no such position
std::int64_t pixel_budget(std::FILE* file, int start)
{
    if (std::fseek(file, 0, SEEK_END) != 0)
        return -1;
    std::int64_t const size = std::ftell(file);
    if (size < 0 || std::fseek(file, start, SEEK_SET) != 0)
        return -1;
    // Bounded above too: a folder may claim any size.
    std::int64_t const bytes = std::clamp<std::int64_t>(size - start, 0, mrUtils::max_block_pixels);
    return mrUtils::max_block_pixels + bytes * mrUtils::max_pixels_per_byte;
}

/// 1 when the file has bytes for another image, which are left to be read.
int at_image(std::FILE* file)
{
    char probe[probe_size];
    return std::fread(probe, 1, probe_size, file) == probe_size &&
           std::fseek(file, -static_cast<long>(probe_size), SEEK_CUR) == 0;
}

struct Unreference
{
    void operator()(dgDuctImage* image) const { image->unreference(); }
};

using HeldImage = std::unique_ptr<dgDuctImage, Unreference>;

void store(HeldImage image, utString const& title, utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    dgDuctImage*& place = images[title];
    if (place)
        place->unreference();
    place = image.release();
}

/// Reads one image into the table, or drops it when it has no title.
/// @param budget  in pixels; what the image takes is taken off
int read_image(std::FILE* file, std::int64_t& budget, utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
    dgDuctImage* const read = gxPNGReaderDuctImage::read_file(
        file, texts, std::min<std::int64_t>(budget, gxPNGReaderDuctImage::max_pixels));
    if (!read)
        return 0;
    read->reference();
    HeldImage image(read);
    budget -= std::int64_t{image->width()} * image->height();

    utString const& name = texts.read(image_name_key);
    if (!name.empty())
        image->new_name(name.c_str());

    utString const& title = texts.read(title_key);
    if (!title.empty())
        store(std::move(image), title, images);
    return 1;
}

/// The sum of the characters, each from -128 to 127, on 32 bits.
int sum_of_characters(utString const& text)
{
    std::uint32_t sum = 0;
    for (char character : text.view())
        sum += static_cast<std::uint32_t>(static_cast<signed char>(character));
    return static_cast<int>(sum);
}

unsigned int joined(int high, int middle, int low)
{
    auto const reduced = [](int part) { return static_cast<unsigned int>(part % 255); };
    return reduced(high) << 16 | reduced(middle) << 8 | reduced(low);
}

/// The low eight bits of the number truncated, 0 where that fits no int.
unsigned char low_byte(double value)
{
    bool const fits = value > -2147483649.0 && value < 2147483648.0;
    return static_cast<unsigned char>(fits ? static_cast<int>(value) : 0);
}

unsigned char cmy_channel(double value)
{
    return static_cast<unsigned char>(255 - low_byte(value));
}

/// @param black  as a fraction
unsigned char cmyk_channel(double percentage, double black)
{
    double const ink = percentage / 100.0 * (1.0 - black) + black;
    return low_byte((1.0 - ink) * 255.0);
}

giColour from_cmyk(doublecoDList const& values)
{
    double const black = values[3] / 100.0;
    if (black == 1.0)
        return giColour();
    return giColour(cmyk_channel(values[0], black), cmyk_channel(values[1], black),
                    cmyk_channel(values[2], black), 0);
}

} // namespace

int mrUtils::write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, utString const& path)
{
    for (auto const& [key, image] : images)
        if (!append_image(key, image, path))
            return 0;
    return 1;
}

int mrUtils::read_images(utString const& path, int start, utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    utString reason;
    gxFile const file = gx_open_file(path.c_str(), reason);
    if (!file)
        return 0;
    std::int64_t budget = pixel_budget(file.get(), start);
    if (budget < 0)
        return 0;
    try {
        while (at_image(file.get()))
            if (!read_image(file.get(), budget, images))
                return 0;
    } catch (std::bad_alloc const&) {
        return 0;
    }
    return std::ferror(file.get()) ? 0 : 1;
}

unsigned int mrUtils::file_hash(utString const& path)
{
    UT_REQUIRE(ntFileOps::exists(path), "argument out of range | Args");
    ntFileDate const date = ntFileOps::file_modified_date(path.c_str());
    int const sum_of_date =
        date.year() + date.month() + date.day() + date.hour() + date.minute() + date.seconds();
    return joined(sum_of_characters(path), sum_of_date, ntFileOps::file_size(path.c_str()));
}

unsigned int mrUtils::symbol_defn_hash(int first, int second, utString text)
{
    UT_REQUIRE(first >= 0, "argument out of range | Args");
    UT_REQUIRE(second >= 0, "argument out of range | Args");
    UT_REQUIRE(!text.empty(), "argument out of range | Args");
    return joined(first, second, sum_of_characters(text));
}

void mrUtils::standardize_path_name(utString& path)
{
    UT_REQUIRE(!path.empty(), "Args");
    path.convert(std::tolower);
    ntFileOps::back_slash_to_proper_ones(path);
}

void mrUtils::colour_from_components(mrColourEncoding encoding, doublecoDList& values, giColour& colour)
{
    UT_REQUIRE(encoding != mrColourEncodingNone, "Invalid format!");
    switch (encoding) {
    case mrColourEncodingRgb8:
        UT_REQUIRE(values.size() == 3, "Expected 3 component values!");
        colour = giColour(low_byte(values[0]), low_byte(values[1]), low_byte(values[2]), 0);
        return;
    case mrColourEncodingCmy8:
        UT_REQUIRE(values.size() == 3, "Expected 3 component values!");
        colour = giColour(cmy_channel(values[0]), cmy_channel(values[1]), cmy_channel(values[2]), 0);
        return;
    case mrColourEncodingCmyk:
        UT_REQUIRE(values.size() == 4, "Expected 4 component values!");
        colour = from_cmyk(values);
        return;
    default:
        ut_report_assert_failure(__FILE__, __LINE__, "unknown enumerator constant | Invalid format!");
    }
}
