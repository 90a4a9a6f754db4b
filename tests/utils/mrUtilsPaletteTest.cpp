#include "mrUtils.h"

#include "mrColourPalette.h"
#include "mrFault.h"
#include "mrSource.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <sstream>
#include <tuple>

using namespace std::literals;

namespace {

/// A palette read from a text, and what became of it.
struct Read
{
    explicit Read(std::string const& text)
    {
        std::istringstream in(text);
        error = mrUtils::read_pcp(in, palette);
    }

    mrColourPalette palette;
    mrPaletteFileError error;
};

std::string written(mrColourPalette const& palette)
{
    std::ostringstream out;
    EXPECT_EQ(&mrUtils::write_pcp(palette, out), &out);
    return out.str();
}

void expect_lines(std::string const& text, mrPaletteFileError error, std::string const& expected)
{
    Read const read(text);
    EXPECT_EQ(read.error, error) << text.substr(0, 100);
    EXPECT_EQ(written(read.palette), expected) << text.substr(0, 100);
}

} // namespace

TEST(mrUtilsPalette, ReadsTheThreeEncodings)
{
    using Case = std::tuple<std::string, std::string>;
    for (auto const& [text, expected] :
         {Case{"", ""}, Case{"\n\n# nothing\n   # at all\n  \n#", ""},
          Case{"rgb8 255 0 0 Signal red", "rgb8 255 0 0 Signal red\n"},
          Case{"cmy8   0 255 255\n", "rgb8 255 0 0\n"},
          Case{"cmyk 0 0 0 100 Black # darkest\n", "rgb8 0 0 0 Black\n"},
          Case{"rgb8 10 20 30Olive\n", "rgb8 10 20 30 Olive\n"},
          Case{"  rgb8 000255 0  255   A  b   \n", "rgb8 255 0 255 A  b\n"},
          Case{"rgb8 1 2 3    \nrgb8 1 2 3#Red\n", "rgb8 1 2 3\nrgb8 1 2 3\n"},
          Case{"rgb8 1 2 3 Red \r\nrgb8 4 5 6\r\n# end\r\n", "rgb8 1 2 3 Red\nrgb8 4 5 6\n"},
          Case{"rgb8 1 2 3 \xC3\xBC\xFF\ta\n", "rgb8 1 2 3 \xC3\xBC\xFF\ta\n"},
          Case{"rgb8 1 2 3 a\0b\n\0\n"s, "rgb8 1 2 3 a\n"}})
        expect_lines(text, mrPaletteFileOK, expected);
}

TEST(mrUtilsPalette, StopsAtTheFirstLineInErrorAndKeepsThoseBefore)
{
    std::string const good = "rgb8 1 2 3 Red\n";
    using Case = std::tuple<char const*, mrPaletteFileError>;
    for (auto const& [line, error] :
         {Case{"cmy8 0 0 256", mrPaletteFileOutOfRange},
          Case{"rgb8 300 0 99999999999", mrPaletteFileOutOfRange},
          Case{"rgb8 0 99999999999 300", mrPaletteFileBadFormat}, Case{"cmyk 1 2 3", mrPaletteFileBadFormat},
          Case{"rgb8 1\t2 3", mrPaletteFileBadFormat}, Case{"\trgb8 1 2 3", mrPaletteFileBadFormat},
          Case{"rgb8 -1 2 3", mrPaletteFileBadFormat}, Case{"rgb8 1 2 # 3", mrPaletteFileBadFormat},
          Case{"rgb81 2 3", mrPaletteFileBadFormat}, Case{"rgb8 1 2 3 a\rb", mrPaletteFileBadFormat},
          Case{"cmy8 1 2 3   Red ", mrPaletteFileDuplicateName}})
        expect_lines(good + line + "\nrgb8 7 8 9\n", error, good);
}

TEST(mrUtilsPalette, EndsAtALineThatIsTooLong)
{
    std::string const good = "rgb8 1 2 3 Red\n";
    std::string const begin = "rgb8 4 5 6 ";
    std::string const longest = begin + std::string(1023 - begin.size(), 'x') + "\n";
    expect_lines(good + longest + "rgb8 7 8 9\n", mrPaletteFileOK, good + longest + "rgb8 7 8 9\n");
    expect_lines(good + begin + "x" + longest.substr(begin.size()) + "bad\n", mrPaletteFileOK, good);
    expect_lines(good + "#" + std::string(1023, ' ') + "\nbad\n", mrPaletteFileOK, good);
}

TEST(mrUtilsPalette, LetsNoStreamThrow)
{
    for (std::ios::iostate const told : {std::ios::eofbit, std::ios::failbit, std::ios::badbit}) {
        std::istringstream in("rgb8 1 2 3 A\nrgb8 4 5 6 B");
        in.exceptions(told);
        mrColourPalette palette;
        EXPECT_EQ(mrUtils::read_pcp(in, palette), mrPaletteFileOK);
        EXPECT_EQ(palette.size(), 2);
        EXPECT_EQ(in.exceptions(), told);
    }
}

TEST(mrUtilsPalette, CarriesColoursAndNamesOfEverySample)
{
    for (auto const& entry : std::filesystem::directory_iterator(sample("palettes"))) {
        SCOPED_TRACE(entry.path());
        Read const first(read_bytes(entry.path()));
        EXPECT_EQ(first.error, mrPaletteFileOK);
        EXPECT_GE(first.palette.size(), 20);
        expect_lines(written(first.palette), mrPaletteFileOK, written(first.palette));
    }
}

TEST(mrUtilsPalette, TellsTheLineThatIsWrong)
{
    struct
    {
        std::string bytes;
        mrPaletteFileError error;
        std::int64_t line;
        char const* words;
    } const cases[] = {
        {"rgb8 1 2 3\n", mrPaletteFileOK, 0, ""},
        {"rgb8 1 2 3\n\nbad", mrPaletteFileBadFormat, 3, "not rgb8 or cmy8 and three whole numbers"},
        {"cmyk 0 0 0 1\nRGB8 300 0 0\n", mrPaletteFileBadFormat, 2, "its keyword is not in small letters"},
        {"rgb8 1 2 3 a\nrgb8\t4 5 6\n", mrPaletteFileBadFormat, 2, "it has a tab where only spaces may be"},
        {"rgb8 1 2 3 a\nrgb8 4 5 6 a", mrPaletteFileDuplicateName, 2,
         "an earlier line has the name \"a\" already"},
        {"rgb8 1 2 3\r\rrgb8 4 5 6\r", mrPaletteFileBadFormat, 1, "it has a carriage return inside"},
        {"cmyk 0 0 101 0", mrPaletteFileOutOfRange, 1, "a number is out of its range"},
        {"rgb8 1 2 3\n" + std::string(5000, '#'), mrPaletteFileOK, 2, "longer than 1,023 characters"},
    };
    for (auto const& each : cases) {
        mrColourPalette palette;
        mrFault fault;
        EXPECT_EQ(mrUtils::read_pcp(mrSource::from_memory(each.bytes), palette, fault), each.error);
        EXPECT_EQ(fault.line, each.line) << each.words;
        EXPECT_THAT(std::string(fault.reason.view()), testing::StartsWith(each.words));
    }
    mrColourPalette palette;
    mrFault fault;
    EXPECT_EQ(mrUtils::read_pcp(mrSource::from_path("/"), palette, fault), mrPaletteFileOpenFailed);
    EXPECT_EQ(fault.words(), "a folder, not a file");
}
