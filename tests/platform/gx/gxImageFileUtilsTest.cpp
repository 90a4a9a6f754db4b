#include "gxImageFileUtils.h"

#include "mrTest.h"
#include "testImage.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <sys/stat.h>

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

/// Red, green, blue and white from left to right, in blocks of sixteen pixels: as large as lossy formats need.
void save_stripes(std::string const& path, char const* format)
{
    std::string const colours[] = {"\xff\0\0"s, "\0\xff\0"s, "\0\0\xff"s, "\xff\xff\xff"s};
    std::string bytes;
    for (int at = 0; at < 64 * 16; ++at)
        bytes += colours[at % 64 / 16];
    GdkPixbuf* const pixbuf =
        gdk_pixbuf_new_from_data(reinterpret_cast<guchar const*>(bytes.data()), GDK_COLORSPACE_RGB, FALSE, 8,
                                 64, 16, 64 * 3, nullptr, nullptr);
    EXPECT_TRUE(gdk_pixbuf_save(pixbuf, path.c_str(), format, nullptr, nullptr)) << format;
    g_object_unref(pixbuf);
}

TEST(gxImageFileUtils, extensions)
{
    auto const extension = [](char const* path, char separator = '.') {
        char const* const found = gxImageFileUtils::get_extension(path, separator);
        return std::string(found ? found : "none");
    };
    EXPECT_EQ(extension("a/b.c/d.e.PNG"), "PNG");
    EXPECT_EQ(extension("a_png", '_'), "png");
    for (char const* path : {"a", "a.", "a.b/c", static_cast<char const*>(nullptr)})
        EXPECT_EQ(extension(path), "none");

    gxImageFileFormat format = gxImageFileSVG;
    EXPECT_TRUE(gxImageFileUtils::file_format_from_extension("JpEg", format));
    for (utString const& unknown : {utString(), utString("pn"), utString("pngx")})
        EXPECT_FALSE(gxImageFileUtils::file_format_from_extension(unknown, format)) << unknown.c_str();
    EXPECT_EQ(format, gxImageFileJPEG);
}

TEST(gxImageFileUtils, reads_each_format)
{
    TestFolder folder;
    for (char const* format : {"png", "jpeg", "tiff", "bmp", "ico"})
        save_stripes(folder.path("a."s + format), format);
    // Orientation 6: the camera was held so that the picture's left is up.
    std::string turned = read_bytes(folder.path("a.jpeg"));
    turned.insert(2, "\xff\xe1\0\x22"s
                     "Exif\0\0MM\0\x2a\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0"s);
    write_bytes(folder.path("turned.jpg"), turned);
    write_bytes(folder.path("a.tga"), "\0\0\2\0\0\0\0\0\0\0\0\0\1\0\1\0\x20\x28\x14\x28\x3c\x50"s);
    // Two frames of one pixel, the first of colour 1.
    std::string const frame = "\x2c\0\0\0\0\1\0\1\0\0\2\2"s;
    write_bytes(folder.path("a.gif"),
                "GIF89a\1\0\1\0\x80\0\0\1\2\3\x28\x32\x3c"s + frame + "\x4c\1\0"s + frame + "\x44\1\0;"s);
    write_bytes(folder.path("a.ppm"), "P3 1 2 255 1 2 3 70 80 90");
    write_bytes(folder.path("a.svg"), "<svg xmlns='http://www.w3.org/2000/svg' width='100000' height='50000'>"
                                      "<rect width='50000' height='50000' fill='#0000ff'/></svg>");
    struct Case
    {
        char const* name;
        int width, height, x, y;
        Pixel colour;
    };
    Pixel const blue{0, 0, 255, 255};
    for (auto const& [name, width, height, x, y, colour] :
         {Case{"a.png", 64, 16, 40, 8, blue}, Case{"a.jpeg", 64, 16, 40, 8, blue},
          Case{"a.tiff", 64, 16, 40, 8, blue}, Case{"a.bmp", 64, 16, 40, 8, blue},
          Case{"a.ico", 64, 16, 40, 8, blue}, Case{"turned.jpg", 16, 64, 8, 40, blue},
          Case{"a.tga", 1, 1, 0, 0, {60, 40, 20, 80}}, Case{"a.ppm", 1, 2, 0, 1, {70, 80, 90, 255}},
          Case{"a.gif", 1, 1, 0, 0, {40, 50, 60, 255}}, Case{"a.svg", 2048, 1024, 500, 500, blue},
          Case{"a.svg", 2048, 1024, 1500, 500, {0, 0, 0, 0}}}) {
        utString reason;
        Image const image = read(folder.path(name), reason);
        ASSERT_TRUE(image) << name << reason.c_str();
        EXPECT_EQ(image->references(), 0);
        EXPECT_EQ(image->width(), width) << name;
        EXPECT_EQ(image->height(), height) << name;
        for (std::size_t i = 0; i < 4; ++i)
            EXPECT_NEAR(pixel(*image, x, y)[i], colour[i], 3) << name;
    }
}

/// Nothing of it is written to standard error, and an application's own handling of such messages stays.
TEST(gxImageFileUtils, failures_have_a_reason)
{
    static int heard = 0;
    auto const count = [](char const*, GLogLevelFlags, char const*, void*) { ++heard; };
    guint const handler = g_log_set_handler("GdkPixbuf", G_LOG_LEVEL_WARNING, count, nullptr);
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
    ASSERT_EQ(mkfifo(folder.path("pipe.jpg").c_str(), 0600), 0);
    for (char const* name : {"folder.bmp", "pipe.png", "pipe.jpg"})
        EXPECT_EQ(reason(name), "it is no file") << name;
    write_bytes(folder.path("empty.gif"), "");
    EXPECT_EQ(reason("empty.gif"), "the file is empty");

    // Of these the loaders say nothing.
    write_bytes(folder.path("cut.pgm"), "P5 2 2 255\nxyz");
    write_bytes(folder.path("cut.bmp"), read_bytes(sample("images/hills.bmp")).substr(0, 8000));
    save_stripes(folder.path("a.jpeg"), "jpeg");
    std::string const jpeg = read_bytes(folder.path("a.jpeg"));
    write_bytes(folder.path("cut.jpeg"), jpeg.substr(0, jpeg.size() - 8));
    for (char const* name : {"cut.pgm", "cut.bmp", "cut.jpeg"})
        EXPECT_EQ(reason(name), "the file ends before the image does") << name;

    write_bytes(folder.path("big.pgm"), "P5 40000 40000 255\nx");
    write_bytes(folder.path("big.tga"), "\0\0\2\0\0\0\0\0\0\0\0\0\xff\xff\xff\xff\x18\0xxxxxxxxx"s);
    for (char const* name : {"big.pgm", "big.tga"})
        EXPECT_EQ(reason(name), "the image has more pixels than are allowed") << name;

    for (char const* name :
         {"a.png", "a.jpg", "a.tif", "a.gif", "a.bmp", "a.tga", "a.ico", "a.pnm", "a.svg"}) {
        write_bytes(folder.path(name), "\xff no image\n\033[31m at all, whatever its name says");
        EXPECT_EQ(reason(name).find_first_of("\n\033"), std::string::npos) << name;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(heard, 0);
    g_log("GdkPixbuf", G_LOG_LEVEL_WARNING, "the application's own");
    EXPECT_EQ(heard, 1);
    g_log_remove_handler("GdkPixbuf", handler);
}

} // namespace
