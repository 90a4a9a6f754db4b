#include "mrUtils.h"

#include "mrTest.h"

#include "dgDuctImage.h"

#include <tuple>

namespace {

/// A table that holds a reference on each of its images, as a material file does.
class Images
{
public:
    ~Images()
    {
        for (auto const& [title, image] : table)
            if (image)
                image->unreference();
    }

    dgDuctImage* add(utString const& title, char const* name, short red)
    {
        auto* const image = new dgDuctImage(name, 2, 1);
        short const pixel[4] = {red, 0, 0, 255};
        image->set_pixel(0, 0, pixel);
        image->reference();
        return table[title] = image;
    }

    utStringdgDuctImagecoTablePtrcoPtrcoTable table{mrInitialSize, mrFillLimit};
};

} // namespace

TEST(mrUtils, ImagesFollowWhatAFileHolds)
{
    TestFolder const folder;
    std::string const path = folder.path("block");
    write_bytes(path, "head");
    Images out;
    out.add("a", "first", 10);
    out.add("b", "", 20);
    ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    EXPECT_TRUE(read_bytes(path).starts_with("head\x89PNG"));

    Images in;
    ASSERT_EQ(mrUtils::read_images(path.c_str(), 4, in.table), 1);
    ASSERT_EQ(in.table.size(), 2u);
    EXPECT_STREQ(in.table.read("a")->name(), "first");
    EXPECT_STREQ(in.table.read("b")->name(), "");
    EXPECT_TRUE(in.table.read("a")->equal(out.table.read("a")));
    EXPECT_EQ(in.table.read("a")->references(), 1);
}

TEST(mrUtils, WhatEndsABlockAndWhatBreaksIt)
{
    TestFolder const folder;
    std::string const path = folder.path("block");
    Images out;
    out.add("a", "", 1);
    ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    std::string const image = read_bytes(path);
    int const end = static_cast<int>(image.size());
    using Case = std::tuple<std::string, int, int, std::size_t>;
    for (auto const& [tail, start, result, images] : {
             Case{"", 0, 1, 1},
             Case{"", end, 1, 0},
             Case{"", end + 1000, 1, 0},
             Case{"nine byte", 0, 1, 1},
             Case{"ten bytes.", 0, 0, 1},
             Case{"ten bytes.", end, 0, 0},
             Case{image.substr(0, image.size() - 1), 0, 0, 1},
             Case{"", 1, 0, 0},
             Case{"", -1, 0, 0},
         }) {
        write_bytes(path, image + tail);
        Images in;
        EXPECT_EQ(mrUtils::read_images(path.c_str(), start, in.table), result) << tail << start;
        EXPECT_EQ(in.table.size(), images) << tail << start;
    }
}

TEST(mrUtils, TheLaterOfOneTitleIsKeptAndOneWithoutATitleDropped)
{
    TestFolder const folder;
    std::string const path = folder.path("block");
    for (short red : {short{1}, short{2}}) {
        Images out;
        out.add("a", "", red);
        out.add("", "untitled", 0);
        ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    }

    Images in;
    dgDuctImage* const replaced = in.add("a", "", 3);
    replaced->reference();
    ASSERT_EQ(mrUtils::read_images(path.c_str(), 0, in.table), 1);
    EXPECT_EQ(in.table.size(), 1u);
    EXPECT_EQ(in.table.read("a")->pixels()[0], 2);
    EXPECT_EQ(replaced->references(), 1);
    replaced->unreference();
}

TEST(mrUtils, WritingStopsAtTheFirstThatFails)
{
    TestFolder const folder;
    utString const path = folder.path("block").c_str();
    Images out;
    EXPECT_EQ(mrUtils::write_images(out.table, path), 1);
    EXPECT_FALSE(std::filesystem::exists(path.c_str()));

    out.add("a", "", 1);
    out.table["null"] = nullptr;
    out.add("b", "", 1);
    EXPECT_EQ(mrUtils::write_images(out.table, path), 0);
    Images in;
    EXPECT_EQ(mrUtils::read_images(path, 0, in.table), 1);
    EXPECT_EQ(in.table.size(), 1u);

    EXPECT_EQ(mrUtils::write_images(in.table, folder.path("missing/block").c_str()), 0);
    EXPECT_EQ(mrUtils::write_images(in.table, "/dev/full"), 0);
    EXPECT_EQ(mrUtils::read_images(folder.path("missing").c_str(), 0, in.table), 0);
    EXPECT_EQ(mrUtils::read_images(folder.path("").c_str(), 0, in.table), 0) << "a folder";
}
