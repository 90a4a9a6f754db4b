#include "fileKind.h"

#include "mrTest.h"

namespace mrtool {

TEST(fileKind, is_that_of_the_content_before_that_of_the_name)
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
        {"a.txt", "BMW and others", FileKind::none},
        {"a.STL", "anything", FileKind::mesh},
    };
    TestFolder const folder;
    for (auto const& each : cases) {
        write_bytes(folder.path(each.name), each.beginning);
        KnownFile const file = detect_kind(folder.path(each.name));
        EXPECT_EQ(file.kind, each.kind) << each.name << each.beginning;
        EXPECT_EQ(file.format, each.format) << each.name << each.beginning;
    }
}

} // namespace mrtool
