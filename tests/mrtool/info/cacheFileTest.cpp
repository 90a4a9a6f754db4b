#include "cacheFile.h"

#include "program.h"

#include "mrImageCache.h"

#include <gmock/gmock.h>

using testing::Contains;
using testing::HasSubstr;
using testing::IsEmpty;

namespace mrtool {

namespace {

/// A file that the library wrote of a cache with the hash values 7 and 3,000,000,000.
std::string good_file()
{
    TestFolder const folder;
    auto const picture = four_colours();
    mrImageCache cache(20, 5);
    cache.add_image(7, picture.get());
    cache.add_image(3'000'000'000, picture.get());
    EXPECT_TRUE(cache.write(utString(folder.path("a"))));
    return read_bytes(folder.path("a"));
}

/// What is read of these bytes, after a check that the library's reader comes to the same and that there are
/// warnings where that reports something.
ReadOutcome outcome_of(std::string const& bytes)
{
    CacheContents contents;
    TestFolder const folder;
    write_bytes(folder.path("a"), bytes);
    ReadOutcome const outcome = read_cache_file(folder.path("a"), contents);
    std::vector<std::string> reported;
    {
        mrImageCache cache;
        EXPECT_EQ(outcome.status, cache.read(utString(folder.path("a"))));
        reported = reports();
    }
    reports(); // of the destructor, where the file has a negative limit
    EXPECT_TRUE(!outcome.read() || !outcome.warnings.empty() || reported.empty()) << reported.front();
    return outcome;
}

} // namespace

TEST(cache_file, comes_to_what_the_library_comes_to)
{
    std::string const good = good_file();
    for (std::size_t length = 0; length <= good.size(); ++length)
        outcome_of(good.substr(0, length));
    for (std::size_t at = 0; at < good.find('\x89'); ++at)
        for (char const other : {'\n', ' ', '-', '0', '9', 'x', '\0'}) {
            std::string changed = good;
            changed[at] = other;
            outcome_of(changed);
        }
}

TEST(cache_file, says_what_is_wrong)
{
    std::string const good = good_file();
    std::string const images = good.substr(good.find('\x89'));
    std::string const image = images.substr(0, images.find('\x89', 1));
    struct
    {
        std::string bytes;
        long line; ///< of a fault; -1 where there is but a warning
        char const* said;
    } const cases[] = {
        {"20 5\n7 1\n8 1\n", 3, "the file ends here, without the empty line"},
        {"20 5\n7 " + std::string(1022, '1') + "\n\n", 2, "longer than 1,023 characters"},
        {good.substr(0, good.size() - 9), 0, "image 2, at byte "},
        {"0 -1\n\n", -1, "line 1: the size limit 0 is not above 0"},
        {"20 5\n7 1\n8 1\n\n" + images, -1,
         "line 3: the hash value is 8, but the image in its place has -1294967296"},
        {"20 5\n7 1\n\n" + images, -1, "more images (2) than lines (1); the last images are left out"},
        {"1 0\n7 1\n-1294967296 2\n\n" + images, -1,
         "at least as many entries as the size limit (1) before the last image is entered; reading it may "
         "evict some"},
        {"1 0\n7 1\n7 2\n\n" + png_bytes(*four_colours(), "7") + png_bytes(*four_colours(), "+7"), -1,
         "reading it may evict some"},
        {"9 2\n0 5\n\n" + png_bytes(*four_colours(), "0"), -1,
         "line 2: its image has the hash value 0, which the library reports"},
    };
    for (auto const& each : cases) {
        ReadOutcome const outcome = outcome_of(each.bytes);
        if (each.line < 0) {
            EXPECT_EQ(outcome.status, mrFileMatReadOK);
            EXPECT_THAT(outcome.warnings, Contains(HasSubstr(each.said)));
        } else {
            EXPECT_EQ(outcome.status, mrFileMatBadContent);
            EXPECT_EQ(outcome.line, each.line);
            EXPECT_THAT(outcome.fault, HasSubstr(each.said));
        }
    }
    EXPECT_THAT(outcome_of("2 1\n7 1\n-1294967296 2\n\n" + images).warnings, IsEmpty()) << "full, not more";
    std::string lines;
    for (int line = 0; line < 1000; ++line)
        lines += "x\n";
    EXPECT_EQ(outcome_of("20 5\n" + lines + "\n").warnings.size(), 101u);
}

} // namespace mrtool
