#include "mrUtils.h"

#include "mrTest.h"

#include "dgDuctImage.h"

#include <tuple>

namespace {

/// A table that holds a reference on each of its images, as a material file does.
struct Images
{
    ~Images()
    {
        for (auto const& [title, image] : table)
            if (image)
                image->unreference();
    }

    dgDuctImage* add(utString const& title)
    {
        auto* const image = new dgDuctImage("", 2, 1);
        image->reference();
        return table[title] = image;
    }

    utStringdgDuctImagecoTablePtrcoPtrcoTable table{mrInitialSize, mrFillLimit};
};

class mrUtilsTest : public testing::Test
{
protected:
    TestFolder const folder;
    std::string const path = folder.path("block");
    Images out, in;
};

} // namespace

TEST_F(mrUtilsTest, ImagesFollowWhatAFileHoldsAndTheLaterOfOneTitleCounts)
{
    write_bytes(path, "head");
    dgDuctImage* const a = out.add("a");
    a->new_name("first");
    out.add("b");
    out.add("");
    for (char red : {'1', '2'}) {
        a->pixels()[0] = static_cast<unsigned char>(red);
        ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    }
    EXPECT_TRUE(read_bytes(path).starts_with("head\x89PNG"));

    dgDuctImage* const replaced = in.add("a");
    replaced->reference();
    ASSERT_EQ(mrUtils::read_images(path.c_str(), 4, in.table), 1);
    EXPECT_EQ(in.table.size(), 2u) << "not the one without a title";
    EXPECT_STREQ(in.table.read("a")->name(), "first");
    EXPECT_TRUE(in.table.read("a")->equal(a));
    EXPECT_EQ(in.table.read("a")->references(), 1);
    EXPECT_STREQ(in.table.read("b")->name(), "");
    EXPECT_EQ(replaced->references(), 1);
    replaced->unreference();
}

TEST_F(mrUtilsTest, ReadsFromAnImageOnAndKeepsThoseBeforeWhatIsNone)
{
    out.add("a");
    ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    std::string const image = read_bytes(path);
    write_bytes(path, image + "ten bytes.");
    int const end = static_cast<int>(image.size());
    using Case = std::tuple<int, int, std::size_t>;
    for (auto const& [start, result, images] : {Case{0, 0, 1}, Case{end, 0, 0}, Case{end + 1, 1, 0},
                                                Case{end + 1000, 1, 0}, Case{1, 0, 0}, Case{-1, 0, 0}}) {
        Images found;
        EXPECT_EQ(mrUtils::read_images(path.c_str(), start, found.table), result) << start;
        EXPECT_EQ(found.table.size(), images) << start;
    }
    for (char const* unreadable : {"missing", ""})
        EXPECT_EQ(mrUtils::read_images(folder.path(unreadable).c_str(), 0, out.table), 0) << unreadable;
}

TEST_F(mrUtilsTest, WritingStopsAtTheFirstThatFails)
{
    EXPECT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    EXPECT_FALSE(std::filesystem::exists(path));

    out.add("a");
    for (std::string const& bad : {folder.path("missing/block"), std::string("/dev/full")})
        EXPECT_EQ(mrUtils::write_images(out.table, bad.c_str()), 0) << bad;
    out.table["null"] = nullptr;
    out.add("b");
    EXPECT_EQ(mrUtils::write_images(out.table, path.c_str()), 0);
    EXPECT_EQ(mrUtils::read_images(path.c_str(), 0, in.table), 1);
    EXPECT_EQ(in.table.size(), 1u);
}
