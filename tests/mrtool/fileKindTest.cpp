#include "fileKind.h"

#include "mrTest.h"

namespace mrtool {

TEST(file_kind, content_counts_before_the_name)
{
    using namespace std::string_literals;
    struct
    {
        char const* name;
        std::string beginning;
        FileKind kind;
        gxImageFileFormat format = gxImageFilePNG;
    } const cases[] = {
        {"a.multimat", "GIF89a", FileKind::material},
        {"a.obj", "<?xml?>\n  <multimat>", FileKind::material},
        {"a.txt", "The element <multimat> holds all.", FileKind::none},
        {"a.stl", "\x89PNG\r\n\x1a\n", FileKind::image, gxImageFilePNG},
        {"a.png", "RIFF\x10\0\0\0WEBP"s, FileKind::image, gxImageFileWebP},
        {"a.txt", "BM\x46\0\0\0\0\0\0\0"s, FileKind::image, gxImageFileBMP},
        {"a.txt", "BMW and others", FileKind::none},
        {"a.tga", "anything", FileKind::image, gxImageFileTGA},
        {"a.STL", "anything", FileKind::mesh},
    };
    TestFolder const folder;
    for (auto const& each : cases) {
        write_bytes(folder.path(each.name), each.beginning);
        KnownFile const file = file_kind(folder.path(each.name));
        EXPECT_EQ(file.kind, each.kind) << each.name << each.beginning;
        EXPECT_EQ(file.format, each.format) << each.name << each.beginning;
    }
}

TEST(own_format, is_told_by_name_and_content)
{
    struct
    {
        char const *name, *beginning;
        OwnFormat format;
    } const cases[] = {
        {"a.pcp", "<multimat>", OwnFormat::material},
        {"a.PCP", "RGB8 1 2 3", OwnFormat::palette},
        {"a", "\r\n # colours\n# more\n\n  cmyk 1 2 3 4\n", OwnFormat::palette},
        {"a.pcp", "20 5\n", OwnFormat::palette},
        {"a", "# rgb8 1 2 3", OwnFormat::material},
        {"a", "20 -5\n12 x\n", OwnFormat::image_cache},
        {"a", "20 5 3\n", OwnFormat::material},
    };
    TestFolder const folder;
    for (auto const& each : cases) {
        write_bytes(folder.path(each.name), each.beginning);
        EXPECT_EQ(own_format(folder.path(each.name)), each.format) << each.name << each.beginning;
    }
}

} // namespace mrtool
