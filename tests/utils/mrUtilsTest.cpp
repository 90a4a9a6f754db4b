#include "mrUtils.h"

#include "mrFileMat.h"
#include "mrMatProp.h"
#include "mrTarget.h"
#include "mrTest.h"

#include "dgDuctImage.h"
#include "utConcat.h"

#include <chrono>
#include <tuple>
#include <vector>

namespace {

std::string const out_of_range = "source/utils/mrUtils.cpp: argument out of range | Args";

using Reports = std::vector<std::string>;

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

TEST_F(mrUtilsTest, KeepsControlCharactersApartAndRefusesTwoImagesOfOneTitle)
{
    std::string const nul("\0", 1);
    std::string const names[] = {nul, "\x01", "\x1f\xfc", "?", "\t"};
    for (std::string const& name : names)
        out.add(utString(name));
    ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    ASSERT_EQ(mrUtils::read_images(path.c_str(), 0, in.table), 1);
    ASSERT_EQ(in.table.size(), std::size(names));
    for (char const* title : {"\u2400", "\u2401", "\u241f\xfc", "?", "\t"})
        EXPECT_TRUE(in.table.member(title)) << title;

    std::string const before = read_bytes(path);
    for (auto const& [one, other] :
         {std::pair{"\x02", "\u2402"}, {"\x05\u2406", "\u2405\x06"}, {"", nullptr}}) {
        Images both;
        both.add(one);
        both.add(other);
        mrFault fault;
        EXPECT_EQ(mrUtils::write_images(both.table, mrTarget::to_path(path.c_str()), fault), 0) << one;
        for (char const* key : {one, other ? other : ""})
            EXPECT_NE(fault.words().locate_substring(ut_quote(key)), -1) << fault.words().view();
        mrFileMat const file({mrInitialSize, mrFillLimit}, {}, both.table);
        EXPECT_EQ(file.write(path.c_str()), 0) << one;
        EXPECT_EQ(read_bytes(path), before) << one;
    }
}

TEST_F(mrUtilsTest, ReadsFromAnImageOnAndKeepsThoseBeforeWhatIsNone)
{
    out.add("a");
    ASSERT_EQ(mrUtils::write_images(out.table, path.c_str()), 1);
    std::string const image = read_bytes(path);
    write_bytes(path, image + "ten bytes.");
    int const end = static_cast<int>(image.size());
    using Case = std::tuple<int, int, std::size_t>;
    for (auto const& [start, result, images] :
         {Case{0, 0, 1}, Case{end, 0, 0}, Case{end + 1, 1, 0}, Case{end + 1000, 1, 0}, Case{-1, 0, 0}}) {
        Images found;
        EXPECT_EQ(mrUtils::read_images(path.c_str(), start, found.table), result) << start;
        EXPECT_EQ(found.table.size(), images) << start;
    }
    EXPECT_EQ(mrUtils::read_images(folder.path("missing").c_str(), 0, out.table), 0);

    // A NUL would make the path that of the file that is there.
    utString const no_path(std::string_view(path.c_str(), path.size() + 1));
    EXPECT_EQ(mrUtils::read_images(no_path, 0, in.table) + mrUtils::write_images(out.table, no_path), 0);
}

TEST_F(mrUtilsTest, HashesAFileByPathDateAndSize)
{
    for (char const* name : {"ab", "ba", "longer"})
        write_bytes(folder.path(name), std::string(300, 'x'));
    auto const hash = [this](char const* name) { return mrUtils::file_hash(folder.path(name).c_str()); };
    auto const seconds = std::filesystem::file_time_type::clock::from_sys(
        std::chrono::sys_days{std::chrono::year(2009) / 3 / 4} + std::chrono::seconds(5 * 3600));
    for (char const* name : {"ab", "ba"})
        std::filesystem::last_write_time(folder.path(name), seconds);
    EXPECT_EQ(hash("ab"), hash("ba"));
    // 300 bytes, and 2009 + 3 + 4 + 5.
    EXPECT_EQ(hash("ab") & 0xFFFF, (2021u % 255) << 8 | 45);

    std::filesystem::last_write_time(folder.path("ba"), seconds + std::chrono::seconds(1));
    EXPECT_EQ(hash("ba"), hash("ab") + 256);

    EXPECT_EQ(mrUtils::file_hash("a\x80"), static_cast<unsigned int>((97 - 128) << 16));
    EXPECT_EQ(mrUtils::file_hash(utString()), 0u);
    std::string const there = folder.path("ab");
    // Nothing is there: the sum of the characters alone.
    utString const no_path(std::string_view(there.c_str(), there.size() + 1));
    EXPECT_EQ(mrUtils::file_hash(no_path), hash("ab") & 0xFFFF0000);
    EXPECT_EQ(reports(), Reports(3, out_of_range));
}

TEST(mrUtilsHash, OfADefinition)
{
    using Case = std::tuple<int, int, char const*, unsigned int, std::size_t>;
    for (auto const& [first, second, text, hash, reported] :
         {Case{300, 255, "AB", 2949251, 0}, Case{255, 510, "abc", 39, 0}, Case{-1, 0, "a", 4294901857, 1},
          Case{1, 2, "\xE9", 4294967273, 0}, Case{0, -256, "a", 0xFFFFFF61, 1}, Case{-255, -510, "", 0, 3},
          Case{3, 0, nullptr, 3 << 16, 1}}) {
        EXPECT_EQ(mrUtils::symbol_defn_hash(first, second, text), hash) << first << ' ' << second;
        EXPECT_EQ(reports(), Reports(reported, out_of_range)) << first << ' ' << second;
    }
}

TEST(mrUtilsPath, IsMadeOfSmallLettersAndSlashes)
{
    for (char const* spelt : {"P:\\Paints\\.\\A//B\xC9.PCP", "p:/paints/./a//b\xC9.pcp"}) {
        utString path = spelt;
        mrUtils::standardize_path_name(path);
        EXPECT_EQ(path, "p:/paints/./a//b\xC9.pcp");
    }
    for (utString path : {utString(), utString("")}) {
        utString const before = path;
        mrUtils::standardize_path_name(path);
        EXPECT_EQ(path, before);
        EXPECT_EQ(reports(), Reports{"source/utils/mrUtils.cpp: Args"});
    }
}
