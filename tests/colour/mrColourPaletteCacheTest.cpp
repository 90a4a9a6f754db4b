#include "mrColourPaletteCache.h"

#include "mrTest.h"

#include <sys/stat.h>

namespace {

std::string const file = "source/colour/mrColourPaletteCache.cpp: ";

/// An empty cache, in a folder whose own name may have capital letters.
class mrColourPaletteCacheTest : public testing::Test
{
protected:
    mrColourPaletteCacheTest()
    {
        std::filesystem::current_path(folder.path(""));
        mrColourPaletteCache::delete_singleton();
    }

    ~mrColourPaletteCacheTest() override { std::filesystem::current_path(before); }

    mrColourPaletteCache& cache() { return mrColourPaletteCache::singleton(); }

    TestFolder const folder;
    std::filesystem::path const before = std::filesystem::current_path();
};

} // namespace

TEST_F(mrColourPaletteCacheTest, KeepsPalettesUnderOneSpellingOfTheirPaths)
{
    std::filesystem::create_directory("sub");
    write_bytes("sub/red.pcp", "rgb8 255 0 0 Red\n");
    utString const path = "Sub\\RED.pcp";
    EXPECT_EQ(cache().load_palette(path), mrPaletteFileOK);
    EXPECT_EQ(path, "Sub\\RED.pcp");
    EXPECT_EQ(cache().palette_exists("sub/red.pcp"), 1);
    EXPECT_EQ(&cache().get_palette("sub/red.pcp"), &cache().get_palette(path));
    EXPECT_EQ(cache().get_palette(path).size(), 1);
    EXPECT_EQ(cache().size(), 1);

    write_bytes("Blue.pcp", "rgb8 0 0 255\n");
    EXPECT_EQ(cache().load_palette("Blue.pcp"), mrPaletteFileOpenFailed);

    mrColourPaletteCache::delete_singleton();
    mrColourPaletteCache::delete_singleton();
    EXPECT_EQ(cache().empty(), 1);
}

TEST_F(mrColourPaletteCacheTest, IsAsBeforeAfterAnError)
{
    write_bytes("good", "rgb8 1 2 3\n");
    ASSERT_EQ(cache().load_palette("good"), mrPaletteFileOK);
    write_bytes("third", "rgb8 1 2 3 a\nrgb8 1 2 3 b\nrgb8 1 2 256\n");
    write_bytes("endless", std::string(1 << 20, 'x'));
    std::filesystem::create_directory("directory");
    ASSERT_EQ(mkfifo("pipe", 0600), 0);
    using Case = std::pair<char const*, mrPaletteFileError>;
    for (auto const& [path, error] :
         {Case{"missing", mrPaletteFileOpenFailed}, Case{"directory", mrPaletteFileOpenFailed},
          Case{"pipe", mrPaletteFileOpenFailed}, Case{"third", mrPaletteFileOutOfRange},
          Case{"endless", mrPaletteFileBadFormat}}) {
        EXPECT_EQ(cache().load_palette(path), error) << path;
        EXPECT_EQ(cache().palette_exists(path), 0) << path;
    }
    EXPECT_EQ(cache().load_palette(utString(std::string_view("third\0", 6))), mrPaletteFileOpenFailed);
    EXPECT_EQ(cache().size(), 1);
    EXPECT_EQ(cache().get_palette("good").size(), 1);
}

TEST_F(mrColourPaletteCacheTest, ReplacesAPaletteByALaterLoadAndReportsOneThatIsNotThere)
{
    write_bytes("palette", "rgb8 1 2 3\n");
    ASSERT_EQ(cache().load_palette("palette"), mrPaletteFileOK);
    write_bytes("palette", "rgb8 1 2 3\nrgb8 4 5 6\n");
    EXPECT_EQ(cache().load_palette("palette"), mrPaletteFileOK);
    EXPECT_EQ(cache().get_palette("palette").size(), 2);
    EXPECT_EQ(cache().size(), 1);
    EXPECT_EQ(reports(), std::vector<std::string>{file + "Palette already exists"});

    cache().remove_palette("other");
    EXPECT_EQ(cache().get_palette("other").size(), 0);
    EXPECT_EQ(reports(), std::vector<std::string>(2, file + "No such palette"));
    EXPECT_EQ(cache().load_palette(""), mrPaletteFileOpenFailed);
    EXPECT_EQ(cache().palette_exists(utString()), 0);
    EXPECT_EQ(reports(), std::vector<std::string>(2, "source/utils/mrUtils.cpp: Args"));
    cache().remove_palette("PALETTE");
    EXPECT_EQ(cache().empty(), 1);
}
