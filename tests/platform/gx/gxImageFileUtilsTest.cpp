#include "gxImageFileUtils.h"

#include "mrTest.h"
#include "testImage.h"

#include <gdk-pixbuf/gdk-pixbuf.h>

#include <sys/stat.h>

namespace {

struct Outcome
{
    Image image;
    std::string reason;
};

/// Reads the file as the format of its extension.
Outcome read(std::string const& path)
{
    gxImageFileFormat format;
    EXPECT_TRUE(gxImageFileUtils::file_format_from_extension(
        gxImageFileUtils::get_extension(path.c_str(), '.'), format));
    utString reason;
    Outcome outcome;
    outcome.image.reset(gxImageFileUtils::read_image_file(path.c_str(), format, &reason));
    outcome.reason = reason.c_str();
    EXPECT_EQ(outcome.reason.empty(), outcome.image != nullptr) << path << outcome.reason;
    return outcome;
}

/// Red, green, blue and white from left to right, in blocks of sixteen pixels: as large as lossy formats need.
struct Stripes
{
    static constexpr int width = 64;
    static constexpr int height = 16;
    static constexpr Pixel colours[4] = {
        {255, 0, 0, 255}, {0, 255, 0, 255}, {0, 0, 255, 255}, {255, 255, 255, 255}};

    static std::string rgb()
    {
        std::string bytes;
        for (int at = 0; at < width * height; ++at)
            for (std::size_t i = 0; i < 3; ++i)
                bytes += static_cast<char>(colours[at % width / 16][i]);
        return bytes;
    }

    static void save(std::string const& path, char const* format)
    {
        std::string const bytes = rgb();
        GdkPixbuf* const pixbuf =
            gdk_pixbuf_new_from_data(reinterpret_cast<guchar const*>(bytes.data()), GDK_COLORSPACE_RGB, FALSE,
                                     8, width, height, width * 3, nullptr, nullptr);
        EXPECT_TRUE(gdk_pixbuf_save(pixbuf, path.c_str(), format, nullptr, nullptr)) << format;
        g_object_unref(pixbuf);
    }

    static void expect(dgDuctImage const& image)
    {
        ASSERT_EQ(image.width(), width);
        ASSERT_EQ(image.height(), height);
        for (int stripe = 0; stripe < 4; ++stripe)
            for (std::size_t i = 0; i < 4; ++i)
                EXPECT_NEAR(pixel(image, 16 * stripe + 8, 8)[i], colours[stripe][i], 3) << stripe;
    }
};

std::string text(char const* bytes, std::size_t count)
{
    return {bytes, count};
}

TEST(gxImageFileUtils, extensions)
{
    auto const extension = [](char const* path, char separator = '.') {
        char const* const found = gxImageFileUtils::get_extension(path, separator);
        return std::string(found ? found : "none");
    };
    EXPECT_EQ(extension("a/b.c/d.PNG"), "PNG");
    EXPECT_EQ(extension("a.tar.gz"), "gz");
    EXPECT_EQ(extension("a_png", '_'), "png");
    for (char const* path : {"", "a", "a.", "a.b/c", "."})
        EXPECT_EQ(extension(path), "none") << path;
    EXPECT_EQ(extension(nullptr), "none");

    gxImageFileFormat format = gxImageFileSVG;
    EXPECT_TRUE(gxImageFileUtils::file_format_from_extension("JpEg", format));
    EXPECT_EQ(format, gxImageFileJPEG);
    for (utString const& unknown :
         {utString(), utString(""), utString("pn"), utString("pngx"), utString(".png")})
        EXPECT_FALSE(gxImageFileUtils::file_format_from_extension(unknown, format)) << unknown.c_str();
    EXPECT_EQ(format, gxImageFileJPEG);
}

TEST(gxImageFileUtils, reads_each_format)
{
    TestFolder folder;
    for (char const* format : {"png", "jpeg", "tiff", "bmp", "ico"}) {
        Stripes::save(folder.path(std::string("a.") + format), format);
        Outcome const outcome = read(folder.path(std::string("a.") + format));
        ASSERT_TRUE(outcome.image) << format << outcome.reason;
        Stripes::expect(*outcome.image);
        EXPECT_EQ(outcome.image->references(), 0);
    }
    write_bytes(folder.path("a.ppm"), "P6 64 16 255\n" + Stripes::rgb());
    Stripes::expect(*read(folder.path("a.ppm")).image);

    write_bytes(folder.path("a.tga"), text("\0\0\2\0\0\0\0\0\0\0\0\0\1\0\1\0\x20\x28\x1\x2\x3\x4", 22));
    EXPECT_EQ(pixel(*read(folder.path("a.tga")).image, 0, 0), (Pixel{3, 2, 1, 4}));

    // Two frames of one pixel, the first of colour 1.
    std::string const frame = text("\x2c\0\0\0\0\1\0\1\0\0\2\2", 12);
    write_bytes(folder.path("a.gif"), text("GIF89a\1\0\1\0\x80\0\0\1\2\3\4\5\6", 19) + frame +
                                          text("\x4c\1\0", 3) + frame + text("\x44\1\0;", 4));
    EXPECT_EQ(pixel(*read(folder.path("a.gif")).image, 0, 0), (Pixel{4, 5, 6, 255}));

    write_bytes(folder.path("a.svg"), "<svg xmlns='http://www.w3.org/2000/svg' width='100000' height='50000'>"
                                      "<rect width='50000' height='50000' fill='#0000ff'/></svg>");
    Outcome const drawing = read(folder.path("a.svg"));
    ASSERT_TRUE(drawing.image) << drawing.reason;
    EXPECT_EQ(drawing.image->width(), gxImageFileUtils::max_svg_side);
    EXPECT_EQ(drawing.image->height(), gxImageFileUtils::max_svg_side / 2);
    EXPECT_EQ(pixel(*drawing.image, 500, 500), (Pixel{0, 0, 255, 255}));
    EXPECT_EQ(pixel(*drawing.image, 1500, 500), (Pixel{0, 0, 0, 0}));
}

TEST(gxImageFileUtils, turned_the_way_it_was_taken)
{
    TestFolder folder;
    Stripes::save(folder.path("a.jpg"), "jpeg");
    std::string bytes = read_bytes(folder.path("a.jpg"));
    // Orientation 6: the camera was held so that the picture's left is up.
    std::string const exif = text("Exif\0\0MM\0\x2a\0\0\0\x08\0\1\1\x12\0\3\0\0\0\1\0\6\0\0\0\0\0\0", 32);
    bytes.insert(2, text("\xff\xe1\0", 3) + static_cast<char>(exif.size() + 2) + exif);
    write_bytes(folder.path("a.jpg"), bytes);

    Outcome const outcome = read(folder.path("a.jpg"));
    ASSERT_TRUE(outcome.image) << outcome.reason;
    EXPECT_EQ(outcome.image->width(), Stripes::height);
    EXPECT_EQ(outcome.image->height(), Stripes::width);
    EXPECT_GT(pixel(*outcome.image, 8, 8)[0], 250);
    EXPECT_LT(pixel(*outcome.image, 8, 8)[1], 5);
    EXPECT_LT(pixel(*outcome.image, 8, 40)[0], 5);
}

/// Nothing of it is written to standard error, and an application's own handling of such messages stays.
TEST(gxImageFileUtils, failures_have_a_reason)
{
    static int heard = 0;
    auto const count = [](char const*, GLogLevelFlags, char const*, void*) { ++heard; };
    guint const handler = g_log_set_handler("GdkPixbuf", G_LOG_LEVEL_WARNING, count, nullptr);
    TestFolder folder;
    testing::internal::CaptureStderr();

    EXPECT_EQ(read(folder.path("missing.jpg")).reason,
              "the file cannot be opened: No such file or directory");
    std::filesystem::create_directory(folder.path("folder.bmp"));
    ASSERT_EQ(mkfifo(folder.path("pipe.png").c_str(), 0600), 0);
    ASSERT_EQ(mkfifo(folder.path("pipe.jpg").c_str(), 0600), 0);
    for (char const* name : {"folder.bmp", "pipe.png", "pipe.jpg"})
        EXPECT_EQ(read(folder.path(name)).reason, "it is no file") << name;
    write_bytes(folder.path("empty.gif"), "");
    EXPECT_EQ(read(folder.path("empty.gif")).reason, "the file is empty");

    write_bytes(folder.path("big.pgm"), "P5 40000 40000 255\nx");
    write_bytes(folder.path("big.tga"), text("\0\0\2\0\0\0\0\0\0\0\0\0\xff\xff\xff\xff\x18\0xxxxxxxxx", 27));
    for (char const* name : {"big.pgm", "big.tga"})
        EXPECT_EQ(read(folder.path(name)).reason, "the image has more pixels than are allowed") << name;

    for (char const* name :
         {"a.png", "a.jpg", "a.tif", "a.gif", "a.bmp", "a.tga", "a.ico", "a.pnm", "a.svg"}) {
        write_bytes(folder.path(name), "\xff no image\n\033[31m at all, whatever its name says");
        std::string const reason = read(folder.path(name)).reason;
        EXPECT_EQ(reason.find_first_of("\n\033"), std::string::npos) << reason;
    }
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(heard, 0);
    g_log("GdkPixbuf", G_LOG_LEVEL_WARNING, "the application's own");
    EXPECT_EQ(heard, 1);
    g_log_remove_handler("GdkPixbuf", handler);
}

} // namespace
