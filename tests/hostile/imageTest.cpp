// Images made to harm their reader.
#include "confined.h"
#include "rawPNG.h"
#include "readers.h"

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
    for (char& byte : bytes)
        byte = static_cast<char>(numbers());
    return bytes;
}

/// "x" a gigabyte long, deflated.
std::string deflated_gigabyte()
{
    std::string piece(std::size_t{1} << 24, 'x');
    std::string packed(std::size_t{1} << 23, '\0');
    z_stream stream{};
    deflateInit(&stream, Z_DEFAULT_COMPRESSION);
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    for (int left = 63; left >= 0; --left) {
        stream.next_in = reinterpret_cast<Bytef*>(piece.data());
        stream.avail_in = static_cast<uInt>(piece.size());
        deflate(&stream, left > 0 ? Z_NO_FLUSH : Z_FINISH);
    }
    packed.resize(stream.total_out);
    deflateEnd(&stream);
    return packed;
}

using HostileImage = HostileFile;

} // namespace

TEST_F(HostileImage, AnnouncesMoreThanItHolds)
{
    expect("PNG that declares 46,340 x 46,340 in 400 bytes",
           RawPNG{.width = 46340, .height = 46340, .rows = noise(300)}.bytes(), read_png,
           "the image has more pixels than are allowed");
    RawPNG ten_rows{.width = large, .height = large, .rows = noise(std::size_t{10} * (large + 1))};
    for (std::size_t row = 0; row < 10; ++row)
        ten_rows.rows[row * (large + 1)] = '\0';
    expect("PNG that declares 16,384 x 16,384 and holds ten rows", ten_rows.bytes(), read_png,
           "the file is too short for the pixels that it announces");
    ten_rows.after = chunk("teSt", noise(std::size_t{1} << 20));
    expect("the same and a megabyte of something else", ten_rows.bytes(), read_png, "Not enough image data",
           large_pixels);
}

TEST_F(HostileImage, BadChecksumsAndNoEnd)
{
    std::string bytes = one;
    std::size_t const text_sum = bytes.find("kept") + 4;
    bytes[text_sum] = static_cast<char>(bytes[text_sum] ^ 1);
    expect("bad checksum of a text", bytes, read_png, "1 x 1 \"kept\"", 1);
    bytes = one;
    bytes.back() = static_cast<char>(bytes.back() ^ 1);
    expect("bad checksum of the end", bytes, read_png, "IEND: CRC error", 1);
    bytes.pop_back();
    expect("PNG cut in its last chunk", bytes, read_png, "the file ends before the image does", 1);
}

TEST_F(HostileImage, TextsThatGrow)
{
    std::string const packed_text = deflated(std::string(8 << 20, 'x'));
    std::string texts;
    for (int i = 0; i < 200; ++i)
        texts += chunk("zTXt", "Text" + std::to_string(i) + "\0\0"s + packed_text);
    std::string const gigabyte = deflated_gigabyte();
    for (auto const& [name, text] : {
             std::pair{"200 text entries that inflate to 8 MB each", title + texts},
             {"text entry that inflates to a gigabyte", chunk("zTXt", "Text\0\0"s + gigabyte) + title},
             {"the same with language", chunk("iTXt", "Text\0\1\0\0\0"s + gigabyte) + title},
         })
        expect(name, RawPNG{.before = text}.bytes(), read_png, "1 x 1 \"kept\"", 1);
    expect("a gigabyte of pixels where one is due",
           one.substr(0, one.find("IDAT") - 4) + chunk("IDAT", gigabyte) + chunk("IEND", ""), read_png,
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
    // The block may have 2^28 pixels, and 256 more for each byte of it, which is just not enough for two.
    expect("32 images of 16,384 x 16,384 in one block of a megabyte", block, read_block,
           "1 images, then none", large_pixels);
    int const count = (1 << (sanitized ? 20 : 23)) / static_cast<int>(one.size()) + 1;
    expect("images of one pixel and one title", repeated(one, count), read_block, "1 images", count);
    expect("ten bytes after an image", one + "ten bytes.", read_block, "1 images, then none", 1);
}
