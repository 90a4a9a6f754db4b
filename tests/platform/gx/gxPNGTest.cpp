#include "gxPNG.h"

#include "mrTest.h"
#include "rawPNG.h"
#include "testImage.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <random>

namespace {

struct Close
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

struct Outcome
{
    Image image;
    utStringutStringcoTable texts{4, 50};
    utString reason;
};

Outcome read(std::FILE* file, std::int64_t limit = gxPNGReaderDuctImage::max_pixels)
{
    Outcome outcome;
    outcome.image.reset(gxPNGReaderDuctImage::read_file(file, outcome.texts, limit, &outcome.reason));
    return outcome;
}

Outcome read(std::string bytes, std::int64_t limit = gxPNGReaderDuctImage::max_pixels)
{
    File const file(fmemopen(bytes.data(), bytes.size(), "rb"));
    return read(file.get(), limit);
}

/// An image whose every component of every pixel is another.
Image gradient(int width, int height, bool opaque)
{
    Image image(new dgDuctImage("", width, height));
    for (std::size_t at = 0; at < image->byte_count(); ++at)
        image->pixels()[at] = static_cast<unsigned char>(opaque && at % 4 == 3 ? 255 : at * 7);
    return image;
}

std::string written(dgDuctImage const& image, utStringutStringcoTable const& texts)
{
    TestFolder folder;
    File file(std::fopen(folder.path("a").c_str(), "wb"));
    EXPECT_TRUE(gxPNGWriterDuctImage::write_file(image, file.get(), texts));
    file.reset();
    return read_bytes(folder.path("a"));
}

utStringutStringcoTable no_texts()
{
    return {4, 50};
}

TEST(gxPNG, what_is_written_reads_back)
{
    utStringutStringcoTable texts(4, 50);
    texts["Title"] = "line\nbreak";
    texts["DuctImageName"] = "B\xc3\xa4r";
    texts["Latin"] = "B\xe4r";
    texts["Overlong"] = "\xc0\x80 \xed\xa0\x80 \xf4\x90\x80\x80 \xe4";
    texts["Long"] = utString(std::string(gxPNGReaderDuctImage::max_text_bytes, 'x'));
    texts["Empty"] = "";

    for (bool opaque : {true, false}) {
        Image const image = gradient(37, 11, opaque);
        std::string const bytes = written(*image, texts);
        EXPECT_EQ(bytes[25], opaque ? 2 : 6);

        std::string two = "in front" + bytes + bytes + "behind";
        File const file(fmemopen(two.data(), two.size(), "rb"));
        std::fseek(file.get(), 8, SEEK_SET);
        for (std::size_t count : {1U, 2U}) {
            Outcome const outcome = read(file.get());
            ASSERT_TRUE(outcome.image) << outcome.reason.c_str();
            EXPECT_TRUE(image->equal(outcome.image.get()));
            EXPECT_EQ(outcome.image->references(), 0);
            EXPECT_STREQ(outcome.image->name(), "");
            EXPECT_EQ(outcome.texts.size(), texts.size());
            for (auto const& [key, text] : texts)
                EXPECT_TRUE(outcome.texts.read(key) == text) << key.c_str();
            EXPECT_EQ(std::ftell(file.get()), static_cast<long>(8 + count * bytes.size()));
        }
        EXPECT_FALSE(read(file.get()).image);
    }
}

TEST(gxPNG, what_cannot_be_written_leaves_the_file_alone)
{
    TestFolder folder;
    File const file(std::fopen(folder.path("a").c_str(), "wb"));
    Image const image = gradient(3, 3, true);
    auto const takes = [&](utString const& key, utString const& text) {
        utStringutStringcoTable texts(4, 50);
        texts[key] = text;
        return gxPNGWriterDuctImage::write_file(*image, file.get(), texts);
    };
    std::string const too_long(gxPNGReaderDuctImage::max_text_bytes + 1, 'x');
    for (std::string const& key :
         {std::string(), std::string(80, 'k'), std::string("\xe4"), std::string("a\nb"), std::string(" a"),
          std::string("a "), std::string("a  b")})
        EXPECT_FALSE(takes(utString(key), "text")) << key;
    EXPECT_FALSE(takes("key", utString(std::string("a\0b", 3))));
    EXPECT_FALSE(takes("key", utString(too_long)));
    EXPECT_FALSE(gxPNGWriterDuctImage::write_file(*Image(new dgDuctImage("", 0, 5)), file.get(), no_texts()));
    Image const wide(new dgDuctImage("", gxPNGReaderDuctImage::max_side + 1, 1));
    EXPECT_FALSE(gxPNGWriterDuctImage::write_file(*wide, file.get(), no_texts()));
    EXPECT_EQ(std::ftell(file.get()), 0);

    EXPECT_TRUE(takes(utString(std::string(79, 'k')), "text"));
    File const full(std::fopen("/dev/full", "wb"));
    EXPECT_FALSE(gxPNGWriterDuctImage::write_file(*image, full.get(), no_texts()));
}

/// One pixel, or a row of them, of each kind that the format has.
TEST(gxPNG, every_kind_becomes_rgba)
{
    std::string const palette = chunk("PLTE", std::string("\x0a\x14\x1e\xc8\xd2\xdc", 6));
    struct Kind
    {
        int colour_type, depth;
        std::uint32_t width;
        std::string before, row;
        Pixel last;
    };
    auto const text = [](char const* bytes, std::size_t count) { return std::string(bytes, count); };
    std::vector<Kind> const kinds = {
        {0, 1, 8, "", text("\0\x01", 2), {255, 255, 255, 255}},
        {0, 2, 4, "", text("\0\x02", 2), {170, 170, 170, 255}},
        {0, 4, 2, "", text("\0\x07", 2), {119, 119, 119, 255}},
        {0, 8, 1, "", text("\0\x63", 2), {99, 99, 99, 255}},
        {0, 16, 1, "", text("\0\x80\xff", 3), {128, 128, 128, 255}},
        {0, 8, 1, chunk("tRNS", text("\0\x63", 2)), text("\0\x63", 2), {99, 99, 99, 0}},
        {2, 8, 1, "", text("\0\x01\x02\x03", 4), {1, 2, 3, 255}},
        {2, 16, 1, "", text("\0\x01\0\x02\0\x03\0", 7), {1, 2, 3, 255}},
        {2, 8, 1, chunk("tRNS", text("\0\x01\0\x02\0\x03", 6)), text("\0\x01\x02\x03", 4), {1, 2, 3, 0}},
        {3, 1, 8, palette, text("\0\x01", 2), {200, 210, 220, 255}},
        {3, 8, 1, palette + chunk("tRNS", "\x05\x06"), text("\0\x01", 2), {200, 210, 220, 6}},
        {4, 8, 1, "", text("\0\x09\x08", 3), {9, 9, 9, 8}},
        {4, 16, 1, "", text("\0\x09\x08\x07\x06", 5), {9, 9, 9, 7}},
        {6, 8, 1, "", text("\0\x01\x02\x03\x04", 5), {1, 2, 3, 4}},
        {6, 16, 1, "", text("\0\x01\0\x02\0\x03\0\x04\0", 9), {1, 2, 3, 4}},
        // Gamma and a background are no reason to change a colour.
        {2, 8, 1, chunk("gAMA", big_endian(20000)), text("\0\x01\x02\x03", 4), {1, 2, 3, 255}},
    };
    for (Kind const& kind : kinds) {
        RawPNG raw;
        raw.width = kind.width;
        raw.depth = kind.depth;
        raw.colour_type = kind.colour_type;
        raw.before = kind.before;
        raw.rows = kind.row;
        Outcome const outcome = read(raw.bytes());
        ASSERT_TRUE(outcome.image) << kind.colour_type << "/" << kind.depth << outcome.reason.c_str();
        EXPECT_EQ(pixel(*outcome.image, static_cast<int>(kind.width) - 1, 0), kind.last)
            << kind.colour_type << "/" << kind.depth;
    }
}

TEST(gxPNG, interlaced)
{
    for (std::uint32_t size : {1u, 3u, 4u, 9u}) {
        static constexpr std::uint32_t passes[7][4] = {{0, 0, 8, 8}, {4, 0, 8, 8}, {0, 4, 4, 8}, {2, 0, 4, 4},
                                                       {0, 2, 2, 4}, {1, 0, 2, 2}, {0, 1, 1, 2}};
        RawPNG raw;
        raw.width = raw.height = size;
        raw.interlaced = true;
        raw.rows.clear();
        for (auto const& [left, top, across, down] : passes)
            for (std::uint32_t y = top; y < size && left < size; y += down) {
                raw.rows += '\0';
                for (std::uint32_t x = left; x < size; x += across)
                    raw.rows += static_cast<char>(y * size + x);
            }
        Outcome const outcome = read(raw.bytes());
        ASSERT_TRUE(outcome.image) << outcome.reason.c_str();
        for (std::size_t i = 0; i < size * size; ++i)
            EXPECT_EQ(outcome.image->pixels()[4 * i], i) << size;
    }
}

TEST(gxPNG, damage)
{
    utStringutStringcoTable texts(4, 50);
    texts["Title"] = "name";
    Image const image = gradient(4, 4, false);
    std::string const good = written(*image, texts);

    for (std::size_t length = 1; length < good.size(); ++length)
        EXPECT_FALSE(read(good.substr(0, length)).image) << length;

    std::size_t const text_chunk = good.find("tEXt");
    std::size_t const text_end = text_chunk + 4 + std::string("Title").size() + 1 + 4 + 4;
    for (std::size_t at = 0; at < good.size(); ++at)
        for (int change : {1, 0x80, 0xff}) {
            std::string bad = good;
            bad[at] = static_cast<char>(bad[at] ^ change);
            // Of everything that stands in the file only the text may be wrong, or an unknown chunk in its
            // place.
            bool const in_text = at >= text_chunk + (change == 1 ? 0 : 4) && at < text_end;
            EXPECT_EQ(read(bad).image != nullptr, in_text) << at << " " << change;
        }

    std::string bad_sum = good;
    bad_sum[text_end - 1] = static_cast<char>(bad_sum[text_end - 1] ^ 1);
    EXPECT_STREQ(read(bad_sum).texts.read("Title").c_str(), "name");
}

TEST(gxPNG, more_pixels_than_allowed)
{
    RawPNG raw;
    raw.width = 20;
    raw.height = 10;
    raw.rows.assign(std::size_t{21} * 10, '\0');
    EXPECT_TRUE(read(raw.bytes(), 200).image);
    EXPECT_FALSE(read(raw.bytes(), 199).image);

    auto const reason = [](std::uint32_t width, std::uint32_t height, bool interlaced) {
        RawPNG bomb;
        bomb.width = width;
        bomb.height = height;
        bomb.interlaced = interlaced;
        bomb.colour_type = 2;
        bomb.rows.assign(std::min<std::size_t>(width, 50000) * 3 * 10 + 10, '\0');
        Outcome outcome = read(bomb.bytes());
        EXPECT_FALSE(outcome.image);
        return std::string(outcome.reason.c_str());
    };
    EXPECT_EQ(reason(46340, 46340, false), "the image has more pixels than are allowed");
    EXPECT_EQ(reason(16384, 16384, false), "the file is too short for the pixels that it announces");
    EXPECT_EQ(reason(16384, 16384, true), "the file is too short for the pixels that it announces");
    EXPECT_NE(reason(2'000'000, 1, false), "");
}

/// More than the file holds, or than the image needs.
TEST(gxPNG, chunks_too_long)
{
    for (char const* name : {"tEXt", "zTXt", "iTXt", "tRNS", "abCd"}) {
        RawPNG raw;
        raw.before = big_endian(0x7fffffff) + name;
        EXPECT_STREQ(read(raw.bytes()).reason.c_str(), "the file ends before the image does") << name;
    }
    RawPNG raw;
    raw.rows.assign(std::size_t{1} << 20, '\0');
    EXPECT_TRUE(read(raw.bytes()).image);
    std::minstd_rand numbers;
    for (char& byte : raw.rows)
        byte = static_cast<char>(numbers());
    raw.rows.front() = 0;
    EXPECT_STREQ(read(raw.bytes()).reason.c_str(), "the image has data past its last row");
}

TEST(gxPNG, texts_beyond_the_limits_are_passed_over)
{
    std::string const bomb = std::string("Bomb\0\0", 6) + deflated(std::string(8 << 20, 'x'));
    RawPNG raw;
    raw.before = chunk("tEXt", std::string("Title\0first", 11)) + chunk("zTXt", bomb);
    raw.before += chunk("iTXt", std::string("Bomb\0\1\0\0\0", 9) + deflated(std::string(8 << 20, 'x')));
    raw.before += chunk("tEXt", std::string("Bomb\0", 5) + std::string(2 << 20, 'x'));
    raw.before += chunk("iCCP", std::string("profile\0\0", 9) + std::string(2 << 20, 'x'));
    raw.before += chunk("zTXt", std::string("Packed\0\0", 8) + deflated("packed"));
    raw.before += chunk("tEXt", std::string("Title\0second", 12));
    for (int i = 0; i < 200; ++i)
        raw.after += chunk("zTXt", bomb);
    raw.after += chunk("tEXt", std::string("Late\0late", 9));

    Outcome const outcome = read(raw.bytes());
    ASSERT_TRUE(outcome.image) << outcome.reason.c_str();
    EXPECT_STREQ(outcome.texts.read("Title").c_str(), "second");
    EXPECT_STREQ(outcome.texts.read("Packed").c_str(), "packed");
    EXPECT_EQ(outcome.texts.size(), 2u);

    raw.before.clear();
    raw.after.clear();
    for (int i = 0; i < gxPNGReaderDuctImage::max_texts + 1; ++i)
        raw.before += chunk("tEXt", std::to_string(i) + std::string("\0text", 5));
    EXPECT_EQ(read(raw.bytes()).texts.size(), static_cast<std::size_t>(gxPNGReaderDuctImage::max_texts));
}

TEST(gxPNG, a_stream_that_cannot_seek)
{
    TestFolder folder;
    write_bytes(folder.path("a"), RawPNG().bytes());
    std::FILE* const pipe = popen(("cat " + folder.path("a")).c_str(), "r");
    EXPECT_STREQ(read(pipe).reason.c_str(), "the length of the file cannot be told");
    pclose(pipe);
}

} // namespace
