// Images made to harm their reader.
#include "confined.h"
#include "rawPNG.h"
#include "readers.h"

#include <algorithm>
#include <random>

using namespace std::literals;

namespace {

constexpr std::uint32_t large = 16384;
constexpr std::int64_t large_pixels = std::int64_t{large} * large;

std::string const title = chunk("tEXt", "Title\0kept"s);
std::string const one = RawPNG{.before = title}.bytes();

std::string noise(std::size_t count)
{
    std::minstd_rand numbers;
    std::string bytes(count, '\0');
    std::ranges::generate(bytes, numbers);
    return bytes;
}

using HostileImage = HostileFile;

} // namespace

TEST_F(HostileImage, AnnouncesMoreThanItHolds)
{
    RawPNG ten_rows{.width = large, .height = large, .rows = noise(std::size_t{10} * (large + 1))};
    for (std::size_t row = 0; row < 10; ++row)
        ten_rows.rows[row * (large + 1)] = '\0';
    expect("PNG that declares 16,384 x 16,384 and holds ten rows", ten_rows.bytes(), read_png,
           "the file is too short for the pixels that it announces");
    ten_rows.after = chunk("teSt", noise(std::size_t{1} << 20));
    expect("the same and a megabyte of something else", ten_rows.bytes(), read_png, "Not enough image data",
           large_pixels);
}

TEST_F(HostileImage, TextsThatGrow)
{
    std::string const much = deflated(std::string(std::size_t{1} << 28, 'x'));
    std::string texts;
    for (int i = 0; i < 4; ++i)
        texts += chunk("zTXt", "Text" + std::to_string(i) + "\0\0"s + much);
    expect("4 text entries that inflate to 256 MiB each", RawPNG{.before = texts + title}.bytes(), read_png,
           "1 x 1 \"kept\"", 1);
    expect("256 MiB of pixels where one is due",
           one.substr(0, one.find("IDAT") - 4) + chunk("IDAT", much) + chunk("IEND", ""), read_png,
           "the image has data past its last row", 1);
}

TEST_F(HostileImage, Blocks)
{
    std::size_t const row = large / 8 + 1;
    std::string const packed =
        RawPNG{.width = large, .height = large, .depth = 1, .rows = std::string(row * large, '\0')}.bytes();
    std::string block;
    for (int i = 0; i < 32; ++i)
        block += packed.substr(0, 33) + chunk("tEXt", "Title\0"s + std::to_string(i)) + packed.substr(33);
    // The block may have 2^28 pixels, and 64 more for each byte of it, which is not enough for two.
    expect("32 images of 16,384 x 16,384 in one block of a megabyte", block, read_block,
           "1 images, then none", large_pixels);

    block.clear();
    std::string const small = RawPNG{.rows = "\0\0"s}.bytes();
    for (int i = 0; i < 40; ++i)
        block += small.substr(0, 33) +
                 chunk("zTXt", "Title\0\0"s + deflated(std::to_string(i) + std::string(1'000'000, 'x'))) +
                 small.substr(33);
    expect("40 images with titles that inflate to a megabyte each", block, read_block, "2 images, then none");
}
