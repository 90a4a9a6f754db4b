#include "paletteFile.h"

#include "mrTest.h"

#include <gmock/gmock.h>

using testing::HasSubstr;

namespace mrtool {

TEST(palette_file, finds_the_line_and_the_reason)
{
    using namespace std::string_literals;
    TestFolder const folder;
    std::string const wide = "rgb8 1 2 3 " + std::string(1012, 'n');
    struct
    {
        std::string bytes;
        mrPaletteFileError status;
        long line;
        char const* remark;
        int colours = 0;
    } const cases[] = {
        {"rgb8 1 2 3 Red\r\n# none\r\ncmyk 1 2 3 4", mrPaletteFileOK, 0, "", 2},
        // The last line has no line feed, so the stream is at its end.
        {"rgb8 1 2 3\n\nbad", mrPaletteFileBadFormat, 3, "not rgb8 or cmy8 and three", 1},
        {"cmyk 0 0 0 1\nRGB8 300 0 0\n", mrPaletteFileBadFormat, 2, "small letters", 1},
        {"rgb8\t1 2 3\n", mrPaletteFileBadFormat, 1, "a tab"},
        {"\xef\xbb\xbf# from elsewhere\n", mrPaletteFileBadFormat, 1, "byte order mark"},
        {"rgb8 1 2 3\r\rrgb8 4 5 6\r", mrPaletteFileBadFormat, 1, "a carriage return inside"},
        {"rgb8 1 2 3\r\n\r\n", mrPaletteFileBadFormat, 2, "nothing but a carriage return", 1},
        {"cmyk 0 0 101 0", mrPaletteFileOutOfRange, 1, "0 to 100 in cmyk"},
        {"rgb8 1 2 3 Red\ncmy8 1 2 3  Red # too\n", mrPaletteFileDuplicateName, 2, "the name \"Red\"", 1},
        {wide + "\n" + wide, mrPaletteFileDuplicateName, 2, "n\"...\"nnn", 1},
        {"rgb8 1 2 3\n" + wide + "n\nrgb8 4 5 6\n", mrPaletteFileOK, 2, "longer than 1,023 characters", 1},
        {std::string(5000, '\0'), mrPaletteFileBadFormat, 1, "longer than 1,023 characters"},
        {"# nothing\n\0\n"s, mrPaletteFileBadFormat, 0, "no colour"},
    };
    for (auto const& each : cases) {
        SCOPED_TRACE(each.bytes.substr(0, 60));
        PaletteFile file;
        write_bytes(folder.path("a.pcp"), each.bytes);
        read_palette_file(folder.path("a.pcp"), file);
        EXPECT_EQ(file.status, each.status);
        EXPECT_EQ(file.line, each.line);
        EXPECT_THAT(file.remark, HasSubstr(each.remark));
        EXPECT_EQ(file.remark.empty(), *each.remark == '\0');
        EXPECT_EQ(file.palette.size(), each.colours);
    }
    PaletteFile none;
    read_palette_file(folder.path("gone.pcp"), none);
    EXPECT_EQ(none.status, mrPaletteFileOpenFailed);
    EXPECT_EQ(none.remark, "No such file or directory");
    read_palette_file(folder.path(""), none);
    EXPECT_EQ(none.status, mrPaletteFileOpenFailed);
    EXPECT_EQ(none.remark, "a folder, not a file");
}

} // namespace mrtool
