// Images made to harm their reader.
#include "confined.h"
#include "rawPNG.h"
#include "readers.h"

#include "mrTest.h"

#include <random>

using namespace std::literals;

namespace {

constexpr std::uint32_t large = 16384;
constexpr std::int64_t large_pixels = std::int64_t{large} * large;

std::string const title = chunk("tEXt", "Title\0kept"s);

std::string noise(std::size_t count)
{
    std::minstd_rand numbers;
    std::string bytes(count, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(numbers());
    return bytes;
}

/// "x" a gigabyte long, deflated. Made of one piece again and again, which flushing makes independent of what
/// stands before it.
std::string deflated_gigabyte()
{
    std::string piece(std::size_t{1} << 24, 'x');
    std::string packed(std::size_t{1} << 16, '\0');
    z_stream stream{};
    deflateInit2(&stream, Z_DEFAULT_COMPRESSION, Z_DEFLATED, -MAX_WBITS, MAX_MEM_LEVEL, Z_DEFAULT_STRATEGY);
    stream.next_in = reinterpret_cast<Bytef*>(piece.data());
    stream.avail_in = static_cast<uInt>(piece.size());
    stream.next_out = reinterpret_cast<Bytef*>(packed.data());
    stream.avail_out = static_cast<uInt>(packed.size());
    deflate(&stream, Z_FULL_FLUSH);
    packed.resize(packed.size() - stream.avail_out);
    deflateEnd(&stream);

    auto const length = static_cast<z_off_t>(piece.size());
    uLong const sum_of_piece =
        adler32(1, reinterpret_cast<Bytef const*>(piece.data()), static_cast<uInt>(piece.size()));
    std::string all = "\x78\x9c";
    uLong sum = 1;
    for (int i = 0; i < 64; ++i) {
        all += packed;
        sum = adler32_combine(sum, sum_of_piece, length);
    }
    return all + "\x03\0"s + big_endian(static_cast<std::uint32_t>(sum));
}

class HostileImage : public testing::Test
{
protected:
    void expect(std::string const& name, std::string const& bytes, std::int64_t pixels, char const* outcome)
    {
        write_bytes(path, bytes);
        EXPECT_EQ(confined({name, static_cast<std::int64_t>(bytes.size()), pixels},
                           [this] { return read_png(path); }),
                  outcome)
            << name;
    }

    void expect_block(std::string const& name, std::string const& bytes, std::int64_t pixels,
                      char const* outcome)
    {
        write_bytes(path, bytes);
        EXPECT_EQ(confined({name, static_cast<std::int64_t>(bytes.size()), pixels},
                           [this] { return read_block(path); }),
                  outcome)
            << name;
    }

    TestFolder const folder;
    std::string const path = folder.path("hostile");
};

} // namespace

TEST_F(HostileImage, AnnouncesMoreThanItHolds)
{
    char const* const too_short = "the file is too short for the pixels that it announces";
    char const* const cut = "the file ends before the image does";
    expect("PNG that declares 46,340 x 46,340 in 400 bytes",
           RawPNG{.width = 46340, .height = 46340, .rows = noise(300)}.bytes(), 0,
           "the image has more pixels than are allowed");
    RawPNG ten_rows{.width = large, .height = large, .rows = noise(std::size_t{10} * (large + 1))};
    for (std::size_t row = 0; row < 10; ++row)
        ten_rows.rows[row * (large + 1)] = '\0';
    expect("PNG that declares 16,384 x 16,384 and holds ten rows", ten_rows.bytes(), 0, too_short);
    ten_rows.after = chunk("teSt", noise(std::size_t{1} << 20));
    expect("the same and a megabyte of something else", ten_rows.bytes(), large_pixels,
           "Not enough image data");
    std::string const whole = RawPNG{.before = title}.bytes();
    expect("PNG cut in its last chunk", whole.substr(0, whole.size() - 1), 1, cut);
}

TEST_F(HostileImage, BadChecksums)
{
    RawPNG const raw{.before = title};
    std::string bytes = raw.bytes();
    std::size_t const text_sum = bytes.find("kept") + 4;
    bytes[text_sum] = static_cast<char>(bytes[text_sum] ^ 1);
    expect("bad checksum of a text", bytes, 1, "1 x 1 \"kept\"");
    bytes = raw.bytes();
    bytes[bytes.size() - 1] = static_cast<char>(bytes[bytes.size() - 1] ^ 1);
    expect("bad checksum of the end", bytes, 1, "IEND: CRC error");
}

TEST_F(HostileImage, TextsThatGrow)
{
    std::string const packed_text = deflated(std::string(8 << 20, 'x'));
    std::string texts;
    for (int i = 0; i < 200; ++i)
        texts += chunk("zTXt", "Text" + std::to_string(i) + "\0\0"s + packed_text);
    expect("200 text entries that inflate to 8 MB each", RawPNG{.before = title + texts}.bytes(), 1,
           "1 x 1 \"kept\"");
    std::string const gigabyte = deflated_gigabyte();
    expect("text entry that inflates to a gigabyte",
           RawPNG{.before = chunk("zTXt", "Text\0\0"s + gigabyte) + title}.bytes(), 1, "1 x 1 \"kept\"");
    expect("the same with language",
           RawPNG{.before = chunk("iTXt", "Text\0\1\0\0\0"s + gigabyte) + title}.bytes(), 1,
           "1 x 1 \"kept\"");
    std::string const whole = RawPNG{.before = title}.bytes();
    std::size_t const pixels = whole.find("IDAT") - 4;
    expect("a gigabyte of pixels where one is due",
           whole.substr(0, pixels) + chunk("IDAT", gigabyte) + chunk("IEND", ""), 1,
           "the image has data past its last row");
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
    expect_block("32 images of 16,384 x 16,384 in one block of a megabyte", block, large_pixels,
                 "1 images, then none");
    std::string const one = RawPNG{.before = title}.bytes();
    std::string many;
    while (many.size() < (std::size_t{1} << (sanitized ? 20 : 23)))
        many += one;
    expect_block("images of one pixel and one title", many,
                 static_cast<std::int64_t>(many.size() / one.size()), "1 images");
    expect_block("ten bytes after an image", one + "ten bytes.", 1, "1 images, then none");
}
