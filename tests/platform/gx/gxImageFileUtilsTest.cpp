#include "gxImageFileUtils.h"

#include "mrTest.h"
#include "testImage.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <sys/stat.h>
#include <tuple>

using namespace std::literals;

namespace {

/// Reads the file as the format of its extension.
Image read(std::string const& path, utString& reason)
{
    gxImageFileFormat format;
    EXPECT_TRUE(gxImageFileUtils::file_format_from_extension(
        gxImageFileUtils::get_extension(path.c_str(), '.'), format));
    return Image(gxImageFileUtils::read_image_file(path.c_str(), format, &reason));
}

void save_blue(std::string const& path, char const* format)
{
    GdkPixbuf* const pixbuf = gdk_pixbuf_new(GDK_COLORSPACE_RGB, FALSE, 8, 64, 16);
    gdk_pixbuf_fill(pixbuf, 0x0000ffff);
    EXPECT_TRUE(gdk_pixbuf_save(pixbuf, path.c_str(), format, nullptr, nullptr)) << format;
    g_object_unref(pixbuf);
}

TEST(gxImageFileUtils, ReadsEachFormat)
{
    TestFolder folder;
    for (char const* format : {"png", "jpeg", "tiff", "bmp", "ico"})
        save_blue(folder.path("a."s + format), format);
    // Orientation 6: the camera was held so that the picture's left is up.
    std::string turned = read_bytes(folder.path("a.jpeg"));
    turned.insert(2, "\xff\xe1\0\x22"s
                     "Exif\0\0MM\0\x2a\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s);
    write_bytes(folder.path("turned.jpg"), turned);
    write_bytes(folder.path("a.ppm"), "P3 1 2 255 1 2 3 70 80 90");
    write_bytes(folder.path("a.svg"), "<svg xmlns='http://www.w3.org/2000/svg' width='100000' height='50000'>"
                                      "<rect width='50000' height='50000' fill='#0000ff'/></svg>");
    Pixel const blue{0, 0, 255, 255};
    std::tuple<char const*, int, int, int, int, Pixel> const cases[] = {
        {"a.png", 64, 16, 40, 8, blue},           {"a.jpeg", 64, 16, 40, 8, blue},
        {"a.tiff", 64, 16, 40, 8, blue},          {"a.bmp", 64, 16, 40, 8, blue},
        {"a.ico", 64, 16, 40, 8, blue},           {"turned.jpg", 16, 64, 8, 40, blue},
        {"a.ppm", 1, 2, 0, 1, {70, 80, 90, 255}}, {"a.svg", 2048, 1024, 1500, 500, {0, 0, 0, 0}}};
    for (auto const& [name, width, height, x, y, colour] : cases) {
        utString reason;
        Image const image = read(folder.path(name), reason);
        ASSERT_TRUE(image) << name << reason.c_str();
        EXPECT_EQ(image->width(), width) << name;
        EXPECT_EQ(image->height(), height) << name;
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(pixel(*image, x, y)[i], colour[i], 3) << name;
    }
}

/// Nothing of it is written to standard error.
TEST(gxImageFileUtils, FailuresHaveAReason)
{
    TestFolder folder;
    auto const reason = [&folder](char const* name) {
        utString why_not;
        EXPECT_FALSE(read(folder.path(name), why_not));
        return std::string(why_not.view());
    };
    testing::internal::CaptureStderr();

    EXPECT_EQ(reason("missing.jpg"), "the file cannot be opened: No such file or directory");
    std::filesystem::create_directory(folder.path("folder.bmp"));
    ASSERT_EQ(mkfifo(folder.path("pipe.png").c_str(), 0600), 0);
    EXPECT_EQ(reason("folder.bmp"), "the file cannot be opened: a folder, not a file");
    EXPECT_EQ(reason("pipe.png"), "the file cannot be opened: not a file");
    write_bytes(folder.path("empty.gif"), "");
    EXPECT_EQ(reason("empty.gif"), "the file is empty");

    // Of these the loaders say nothing.
    write_bytes(folder.path("cut.pgm"), "P5 2 2 255\nxyz");
    save_blue(folder.path("a.jpeg"), "jpeg");
    std::string const jpeg = read_bytes(folder.path("a.jpeg"));
    write_bytes(folder.path("cut.jpeg"), jpeg.substr(0, jpeg.size() - 8));
    for (char const* name : {"cut.pgm", "cut.jpeg"})
        EXPECT_EQ(reason(name), "the file ends before the image does") << name;

    write_bytes(folder.path("big.pgm"), "P5 40000 40000 255\nx");
    EXPECT_EQ(reason("big.pgm"), "the image has more pixels than are allowed");

    for (char const* name :
         {"a.png", "a.jpg", "a.tif", "a.gif", "a.bmp", "a.tga", "a.ico", "a.pnm", "a.svg"}) {
        write_bytes(folder.path(name), "\xff no image\n\033[31m at all, whatever its name says");
        EXPECT_EQ(reason(name).find_first_of("\n\033"), std::string::npos) << name;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
}

} // namespace
