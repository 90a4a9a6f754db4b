#include "gxPNG.h"

#include "mrTest.h"
#include "rawPNG.h"
#include "testImage.h"

#include <cstdio>
#include <memory>
#include <random>
#include <utility>

using namespace std::literals;

namespace {

struct Close
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;
using Texts = utStringutStringcoTable;
using Reader = gxPNGReaderDuctImage;

struct Outcome
{
    Image image;
    Texts texts{4, 50};
    utString reason;
};

Outcome read(std::FILE* file, std::int64_t limit = Reader::max_pixels)
{
    Outcome outcome;
    outcome.image.reset(Reader::read_file(file, outcome.texts, limit, &outcome.reason));
    return outcome;
}

Outcome read(std::string bytes, std::int64_t limit = Reader::max_pixels)
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

TEST(gxPNG, WhatIsWrittenReadsBack)
{
    Texts texts(4, 50);
    texts["Title"] = "line\nbreak";
    texts["DuctImageName"] = "B\xc3\xa4r";
    texts["Overlong"] = "\xe0\x80\x80";
    texts["Long"] = utString(std::string(Reader::max_text_bytes, 'x'));
    texts["Empty"] = "";
    TestFolder folder;

    for (bool opaque : {true, false}) {
        Image const image = gradient(37, 11, opaque);
        File out(std::fopen(folder.path("a").c_str(), "wb"));
        EXPECT_TRUE(gxPNGWriterDuctImage::write_file(*image, out.get(), texts));
        out.reset();
        std::string const bytes = read_bytes(folder.path("a"));
        EXPECT_EQ(bytes[25], opaque ? 2 : 6);
        for (auto const entry : {"tEXtTitle", "iTXtDuctImageName", "tEXtOverlong"})
            EXPECT_NE(bytes.find(entry), std::string::npos) << entry;

        std::string two = "in front" + bytes + bytes + "behind";
        File const file(fmemopen(two.data(), two.size(), "rb"));
        std::fseek(file.get(), 8, SEEK_SET);
        for (std::size_t count : {1U, 2U}) {
            Outcome const outcome = read(file.get());
            ASSERT_TRUE(outcome.image) << outcome.reason.c_str();
            EXPECT_TRUE(image->equal(outcome.image.get()));
            EXPECT_EQ(outcome.texts.size(), texts.size());
            for (auto const& [key, text] : texts)
                EXPECT_TRUE(outcome.texts.read(key) == text) << key.c_str();
            EXPECT_EQ(std::ftell(file.get()), static_cast<long>(8 + count * bytes.size()));
        }
    }
}

TEST(gxPNG, WhatCannotBeWrittenLeavesTheFileAlone)
{
    TestFolder folder;
    File const file(std::fopen(folder.path("a").c_str(), "wb"));
    auto const takes = [&file](Image const& image, std::string const& key, std::string const& text) {
        Texts texts(4, 50);
        texts[utString(key)] = utString(text);
        return gxPNGWriterDuctImage::write_file(*image, file.get(), texts);
    };
    Image const image = gradient(3, 3, true);
    for (std::string const& key : {""s, std::string(80, 'k'), "\xe4"s, "a\nb"s, " a"s, "a "s, "a  b"s})
        EXPECT_FALSE(takes(image, key, "text")) << key;
    for (std::string const& text : {"a\0b"s, std::string(Reader::max_text_bytes + 1, 'x')})
        EXPECT_FALSE(takes(image, "key", text));
    EXPECT_FALSE(takes(Image(new dgDuctImage("", 0, 5)), "key", "text"));
    EXPECT_FALSE(takes(Image(new dgDuctImage("", Reader::max_side + 1, 1)), "key", "text"));
    Texts many(4, 50);
    for (int i = 0; i <= Reader::max_texts; ++i)
        many[utString("key").append_integer(i)] = "text";
    EXPECT_FALSE(gxPNGWriterDuctImage::write_file(*image, file.get(), many));
    EXPECT_EQ(std::ftell(file.get()), 0);

    EXPECT_TRUE(takes(image, std::string(79, 'k'), "text"));
}

/// A row of each kind that the format has, and its last pixel.
TEST(gxPNG, EveryKindBecomesRgba)
{
    std::string const some_clear = chunk("PLTE", "\x0a\x14\x1e\xc8\xd2\xdc") + chunk("tRNS", "\x05\x06");
    std::string const clear_grey = chunk("tRNS", "\0\x63"s);
    // No reason to change a colour.
    std::string const gamma = chunk("gAMA", big_endian(20000));
    std::pair<RawPNG, Pixel> const kinds[] = {
        {{.width = 8, .depth = 1, .rows = "\0\x01"s}, {255, 255, 255, 255}},
        {{.before = clear_grey, .rows = "\0\x63"s}, {99, 99, 99, 0}},
        {{.colour_type = 2, .before = gamma, .rows = "\0\x01\x02\x03"s}, {1, 2, 3, 255}},
        {{.colour_type = 3, .before = some_clear, .rows = "\0\x01"s}, {200, 210, 220, 6}},
        {{.colour_type = 4, .rows = "\0\x09\x08"s}, {9, 9, 9, 8}},
        {{.depth = 16, .colour_type = 6, .rows = "\0\x01\0\x02\0\x03\0\x04\0"s}, {1, 2, 3, 4}},
        // The passes of three by three pixels: the first, the fourth to the seventh.
        {{.width = 3, .height = 3, .interlaced = true, .rows = "\0\0\0\2\0\6\x08\0\1\0\7\0\3\4\5"s},
         {2, 2, 2, 255}},
    };
    for (auto const& [raw, last] : kinds) {
        Outcome const outcome = read(raw.bytes());
        ASSERT_TRUE(outcome.image) << raw.colour_type << "/" << raw.depth << outcome.reason.c_str();
        EXPECT_EQ(pixel(*outcome.image, outcome.image->width() - 1, 0), last)
            << raw.colour_type << "/" << raw.depth;
    }
}

TEST(gxPNG, MoreThanAllowedOrThanTheFileHolds)
{
    RawPNG const raw{.width = 20, .height = 10, .rows = std::string(std::size_t{21} * 10, '\0')};
    EXPECT_TRUE(read(raw.bytes(), 200).image);
    EXPECT_EQ(read(raw.bytes(), 199).reason.view(), "the image has more pixels than are allowed");

    std::string texts;
    for (int i = 0; i < Reader::max_texts + 1; ++i)
        texts += chunk("tEXt", std::to_string(i) + "\0text"s);
    EXPECT_EQ(read(RawPNG{.before = texts}.bytes()).texts.size(), std::size_t{Reader::max_texts});

    std::FILE* const pipe = popen("true", "r");
    EXPECT_STREQ(read(pipe).reason.c_str(), "the length of the file cannot be told");
    pclose(pipe);
}

/// However it is cut: only bytes of the pixels count among what may follow the last row.
TEST(gxPNG, AChunkForEachByte)
{
    RawPNG raw{.width = 1000, .depth = 16, .colour_type = 6, .rows = std::string(8001, '\0')};
    std::minstd_rand numbers;
    for (std::size_t at = 1; at < raw.rows.size(); ++at)
        raw.rows[at] = static_cast<char>(numbers());
    std::string const packed = deflated(raw.rows);
    std::string const whole = raw.bytes();
    std::size_t const at = whole.find("IDAT") - 4;
    std::string cut = whole.substr(0, at);
    for (char const byte : packed)
        cut += chunk("IDAT", std::string(1, byte));
    Outcome const outcome = read(cut + whole.substr(at + 12 + packed.size()));
    ASSERT_TRUE(outcome.image) << outcome.reason.c_str();
    EXPECT_TRUE(outcome.image->equal(read(whole).image.get()));
}

} // namespace
