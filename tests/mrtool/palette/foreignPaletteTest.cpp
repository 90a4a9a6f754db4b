// Palettes of other formats, read and named. The files are put together here.
#include "foreignPalette.h"

#include "mrTest.h"

#include <gmock/gmock.h>

#include <bit>
#include <cmath>

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;

namespace mrtool {

namespace {

std::string big_endian(std::uint32_t value, int bytes)
{
    std::string made;
    while (bytes-- > 0)
        made += static_cast<char>(value >> (8 * bytes));
    return made;
}

std::string ase_block(std::uint32_t type, std::string const& content)
{
    return big_endian(type, 2) + big_endian(static_cast<std::uint32_t>(content.size()), 4) + content;
}

std::string ase_name(std::u16string const& name)
{
    std::string made = big_endian(static_cast<std::uint32_t>(name.size() + 1), 2);
    for (char16_t const unit : name + u'\0')
        made += big_endian(unit, 2);
    return made;
}

std::string ase_colour(std::u16string const& name, char const* model, std::vector<float> const& values,
                       std::uint32_t kind = 2)
{
    std::string content = ase_name(name) + model;
    for (float const value : values)
        content += big_endian(std::bit_cast<std::uint32_t>(value), 4);
    return ase_block(1, content + big_endian(kind, 2));
}

std::string ase(std::vector<std::string> const& blocks)
{
    std::string made = "ASEF" + big_endian(0x10000, 4);
    made += big_endian(static_cast<std::uint32_t>(blocks.size()), 4);
    for (std::string const& block : blocks)
        made += block;
    return made;
}

/// The outcome of converting a file with these bytes.
struct Converted
{
    explicit Converted(std::string const& bytes)
    {
        TestFolder const folder;
        write_bytes(folder.path("from"), bytes);
        Result<ForeignPalette> const palette = read_foreign_palette(folder.path("from"));
        if (!palette) {
            long const line = palette.error().line;
            fault = (line > 0 ? std::to_string(line) + ": " : "") + palette.error().words;
            return;
        }
        of_names = write_palette(palette->colours, folder.path("to")).value();
        lines = read_bytes(folder.path("to"));
        left_out = palette->left_out;
        notes = palette->notes;
    }

    std::string lines, fault;
    std::vector<std::string> left_out, notes, of_names;
};

} // namespace

TEST(foreignPalette, reads_lines_of_text)
{
    Converted const gpl("\xef\xbb\xbfGIMP Palette\r\nName: Web\r\nColumns: 4\r\n#\r\n# by hand\r\n"
                        "  0   0   0\tBlack\r\n255 250 1 Two words \r\n1 2 3 Untitled\r\n\t4 5 6\r\n");
    EXPECT_EQ(gpl.fault, "");
    EXPECT_EQ(gpl.lines, "rgb8 0 0 0 Black\nrgb8 255 250 1 Two words\nrgb8 1 2 3\nrgb8 4 5 6\n");
    EXPECT_THAT(gpl.left_out, ElementsAre("2 header lines (\"Name: Web\", \"Columns: 4\")", "1 comment"));
    EXPECT_THAT(gpl.notes, ElementsAre("\"Untitled\" stands for no name: 1 colour"));
    EXPECT_THAT(gpl.of_names,
                ElementsAre("without blanks at an end: 1 name (\"Two words \" becomes \"Two words\")"));

    Converted const transparent("GIMP Palette\nChannels: RGBA\n1 2 3 0 None\n4 5 6 255 All\n");
    EXPECT_EQ(transparent.lines, "rgb8 1 2 3 None\nrgb8 4 5 6 All\n");
    EXPECT_THAT(transparent.left_out, ElementsAre("the transparency of 1 colour (\"None\")"));

    Converted const names("! by hand\n\n # too\n255 250 250\t\tsnow\n 1 2 3\tghost white\n1 2 3\tGhostWhite");
    EXPECT_EQ(names.lines, "rgb8 255 250 250 snow\nrgb8 1 2 3 ghost white\nrgb8 1 2 3 GhostWhite\n");
}

TEST(foreignPalette, reads_swatches_of_every_model)
{
    // The three in Lab are red, green and blue of sRGB; the last lies far outside of it.
    Converted const all(
        ase({ase_block(0xc001, ase_name(u"Prints")), ase_colour(u"a", "RGB ", {0.f, 0.5f, 1.f}),
             ase_colour(u"b", "CMYK", {0.2f, 0.4f, 0.6f, 0.1f}, 1), ase_colour(u"c", "Gray", {0.5f}, 0),
             ase_colour(u"d", "LAB ", {0.5429f, 80.81f, 69.89f}),
             ase_colour(u"e", "LAB ", {0.8782f, -79.29f, 80.99f}),
             ase_colour(u"f", "LAB ", {0.2957f, 68.30f, -112.03f}), ase_colour(u"g", "LAB ", {1.f, 0.f, 0.f}),
             ase_colour(u"h", "LAB ", {0.6f, -120.f, 100.f}), ase_colour(u"", "RGB ", {-1.f, 2.f, 0.f}),
             ase_block(0xc002, ""), ase_block(7, "?")}) +
        "tail");
    EXPECT_EQ(all.fault, "");
    EXPECT_EQ(all.lines,
              "rgb8 0 128 255 a\nrgb8 183 137 91 b\nrgb8 128 128 128 c\nrgb8 255 0 0 d\nrgb8 0 255 0 e\n"
              "rgb8 0 0 255 f\nrgb8 255 255 255 g\nrgb8 0 183 0 h\nrgb8 0 255 0\n");
    EXPECT_THAT(all.left_out,
                ElementsAre("1 group (\"Prints\")", "the kind \"global\" of 1 colour (\"c\")",
                            "the kind \"spot\" of 1 colour (\"b\")", HasSubstr("1 unknown block (at byte "),
                            "4 bytes behind the last block"));
    EXPECT_THAT(
        all.notes,
        ElementsAre("converted from CMYK as the library does it, without a profile: 1 colour (\"b\")",
                    "converted from Lab under D50 to sRGB: 5 colours (\"d\", \"e\", \"f\" and 2 more)",
                    "converted from gray: 1 colour (\"c\")",
                    "outside of sRGB and clipped to it: 1 colour (\"h\")",
                    "with components out of their range and brought into it: 1 colour (colour 8)"));

    std::u16string const broken{u'a', 0xd800, u'b', 0xdc00, 0xd83d, 0xde00, 0, 0xd801};
    Converted const name(ase({ase_colour(broken, "RGB ", {0.f, 0.f, 0.f})}));
    EXPECT_EQ(name.lines, "rgb8 0 0 0 a\ufffdb\ufffd\U0001f600 \ufffd\n");
    EXPECT_THAT(name.notes, ElementsAre(HasSubstr("with faulty UTF-16, now U+FFFD: 1 name")));
}

TEST(foreignPalette, refuses_what_is_none)
{
    std::string const red = ase_colour(u"red", "RGB ", {1.f, 0.f, 0.f});
    struct
    {
        std::string bytes;
        char const* fault;
    } const cases[] = {
        {"", "neither a GPL, an ASE nor an rgb.txt palette"},
        {"rgb8 1 2 3\n", "this is a palette file already"},
        {std::string(max_foreign_bytes + 1, '1'), "larger than 32 MiB"},
        {"GIMP Palette\n1 2 3\n\n1 2\n", "4: it does not begin with three whole numbers"},
        {"GIMP Palette\n1 2 255\n1 2 256\n", "3: a number is out of its range, 0 to 255"},
        {"GIMP Palette\nChannels: RGBA\n1 2 3 Red\n", "3: it does not begin with four"},
        {"1 2 3 a\n! b\n1 2 3\n", "3: it has no name"},
        {"ASEF" + big_endian(0x20000, 4) + big_endian(0, 4), "at byte 4: version 2.0"},
        {"ASEF" + big_endian(0x10000, 4) + big_endian(0xffffffff, 4) + red,
         "at byte 46: the file ends before block 2 of 4294967295"},
        {ase({big_endian(1, 2) + big_endian(0xfffffff0, 4)}),
         "block 1: its content takes 4294967280 bytes, with 0"},
        {ase({ase_colour(u"a", "HSB ", {})}), "at byte 24: block 1: its colour model is \"HSB \", none that"},
        {ase({red, ase_colour(u"a", "RGB ", {0.f, std::nanf(""), 0.f})}),
         "block 2: component 2 of \"a\" is no fin"},
    };
    for (auto const& each : cases) {
        SCOPED_TRACE(each.fault);
        EXPECT_THAT(Converted(each.bytes).fault, HasSubstr(each.fault));
    }
}

TEST(foreignPalette, makes_names_that_a_palette_file_can_have)
{
    std::string accents = "a";
    while (accents.size() < 1100)
        accents += "\u00fc";
    std::string const longest(1012, 'x');
    struct
    {
        std::string from, to;
    } const names[] = {
        {"Red #2", "Red 2"},
        {"Red 2", "Red 2 (2)"},
        {"Red (2)", "Red (2)"},
        {"Red", "Red"},
        {" Red", "Red (3)"},
        {"#", ""},
        {longest, longest},
        {longest + "y", std::string(1008, 'x') + " (2)"},
        {accents, accents.substr(0, 1011)},
        {"a\nb", "a b"},
        {std::string("c\0d", 3), "c d"},
    };
    std::vector<ForeignColour> colours;
    std::string lines;
    for (auto const& name : names) {
        colours.push_back({name.from, giColour(1, 2, 3, 0)});
        lines += "rgb8 1 2 3" + (name.to.empty() ? "" : " " + name.to) + "\n";
    }
    colours.push_back({longest, giColour(255, 255, 255, 0)}); // leaves less room for the name
    lines += "rgb8 255 255 255 " + std::string(1006, 'x') + "\n";

    TestFolder const folder;
    std::vector<std::string> const notes = write_palette(colours, folder.path("a.pcp")).value();
    EXPECT_EQ(read_bytes(folder.path("a.pcp")), lines);
    EXPECT_EQ(notes.size(), 5u);
    EXPECT_THAT(notes, Contains(HasSubstr("without the \"#\" that would begin a comment: 2 names")));
    EXPECT_THAT(notes, Contains(HasSubstr("with a blank for a line end or NUL: 2 names")));
}

} // namespace mrtool
