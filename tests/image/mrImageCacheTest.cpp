#include "mrImageCache.h"

#include "mrTest.h"
#include "testImage.h"

#include "utClock.h"
#include "utString.h"

#include <cstdlib>
#include <tuple>

namespace {

using Reports = std::vector<std::string>;

std::string const source = "source/image/mrImageCache.cpp: ";
std::string const item = "source/image/mrImageCacheItem.cpp: ";
std::string const out_of_range = source + "argument out of range | Args";
std::string const present = source + "argument out of range | Hash value already present!";
std::string const invalid_data = source + "Invalid data";
std::string const null_key = "platform/co/coTable.cpp: argument out of range | CO_TABLE::member | null key";

// Where it is summer in January: ages count standard time all the same. Before any test, for the library looks at the
// zone once.
[[maybe_unused]] int const zone = setenv("TZ", "WEST5EAST,M10.1.0,M4.1.0", 1);

/// Midnight at the start of 2009 five hours west of Greenwich.
constexpr std::time_t start = 1230768000 + 5 * 3600;

struct Cache : mrImageCache
{
    using mrImageCache::add_image;
    using mrImageCache::age;
    using mrImageCache::mrImageCache;
    using mrImageCache::shrink_by;
};

class mrImageCacheTest : public testing::Test
{
protected:
    mrImageCacheTest() { utClock::set(start + 1); }
    ~mrImageCacheTest() override { utClock::unset(); }

    /// An image whose first byte is the number, with a reference that the test holds.
    dgDuctImage* image(int number)
    {
        auto* const made = new dgDuctImage("own", 1, 1);
        made->pixels()[0] = static_cast<unsigned char>(number);
        made->reference();
        images.emplace_back(made);
        return made;
    }

    /// Hash values from 1 on with these ages.
    void fill(Cache& cache, std::vector<int> const& ages)
    {
        for (unsigned int hash = 1; hash <= ages.size(); ++hash)
            cache.add_image(hash, image(static_cast<int>(hash)), ages[hash - 1]);
    }

    /// The text part of the file that the cache is written to.
    std::string text_of(mrImageCache& cache)
    {
        EXPECT_EQ(cache.write(path.c_str()), 1);
        std::string const bytes = read_bytes(path);
        return bytes.substr(0, bytes.find("\n\n") + 2);
    }

    /// What reading a file of the text and of what the cache file at the path has after its own text gives.
    mrFileMatReadStatus read_with(std::string const& text, mrImageCache& cache)
    {
        std::string const bytes = read_bytes(path);
        write_bytes(other, text + bytes.substr(bytes.find("\n\n") + 2));
        return cache.read(other.c_str());
    }

    TestFolder const folder;
    std::string const other = folder.path("other");
    std::string const path = folder.path("cache");
    std::vector<Image> images;
};

} // namespace

TEST_F(mrImageCacheTest, AgesAreSecondsOfStandardTimeSince2009)
{
    using Case = std::tuple<std::time_t, int>;
    std::time_t const most = 0x7FFFFFFF;
    for (auto const& [seconds, age] :
         {Case{561081600, 561081600}, Case{-60, -60}, Case{most, 0x7FFFFFFF}, Case{most + 1, 0}}) {
        utClock::set(start + seconds);
        EXPECT_EQ(Cache::age(), age);
    }
}

TEST_F(mrImageCacheTest, TakesAnyLimitsAndReportsThem)
{
    for (auto const& [size, shrinkage, reported] :
         {std::tuple{2, 1, 0u}, {5, 5, 1u}, {0, -1, 2u}, {1, 1, 1u}}) {
        Cache const cache(size, shrinkage);
        EXPECT_EQ(reports(), Reports(reported, source + "Args")) << size << ' ' << shrinkage;
        EXPECT_EQ(cache.max_cache_size(), size);
        EXPECT_EQ(cache.shrinkage(), shrinkage);
    }
}

TEST_F(mrImageCacheTest, ChecksInTheOrderOfEachWayToAdd)
{
    Cache cache(5, 2);
    cache.add_image(0, image(0));
    EXPECT_EQ(reports(), Reports{null_key});
    cache.add_image(0, nullptr);
    EXPECT_EQ(reports(), (Reports{null_key, present, out_of_range, item + "Args"}));
    cache.add_image(0, nullptr, 0);
    EXPECT_EQ(reports(), (Reports{null_key, present, out_of_range, source + "Args", item + "Args"}));
    EXPECT_EQ(cache.size(), 1);
    EXPECT_EQ(cache.get_image(0), nullptr);
    EXPECT_EQ(reports(), Reports{item + "Invalid image!"});
    EXPECT_EQ(images[0]->references(), 2) << "the entry overwritten lives on";

    {
        Cache invalid;
        invalid.add_image(1, image(1));
        EXPECT_EQ(reports(), (Reports{invalid_data, invalid_data, invalid_data, out_of_range, invalid_data,
                                      invalid_data, source + "Incorrect shrinkage"}));
        invalid.add_image(1, nullptr);
        Reports first = reports();
        first.resize(5);
        EXPECT_EQ(first, (Reports{invalid_data, present, out_of_range, invalid_data, item + "Args"}));
    }
    EXPECT_EQ(reports(), Reports{invalid_data});
}

TEST_F(mrImageCacheTest, KeepsWhatWasRemovedAndLetsGoOfTheRest)
{
    {
        Cache cache(5, 2);
        cache.add_image(4000000000u, image(1));
        cache.add_image(2, image(2));
        EXPECT_TRUE(cache.hash_value_exists(4000000000u));
        utClock::set(start + 9);
        EXPECT_EQ(cache.get_image(4000000000u), images[0].get());
        EXPECT_EQ(cache.get_image(3), nullptr);
        EXPECT_EQ(images[0]->references(), 2);
        EXPECT_EQ(text_of(cache), "5 2\n-294967296 9\n2 1\n\n");

        cache.remove_image(2);
        EXPECT_FALSE(cache.hash_value_exists(2));
        cache.remove_image(2);
        EXPECT_EQ(reports(), Reports{source + "Hash value not found!"});
        EXPECT_EQ(cache.size(), 1);
    }
    EXPECT_EQ(images[0]->references(), 1);
    EXPECT_EQ(images[1]->references(), 2);
}

TEST_F(mrImageCacheTest, EvictsByTheYoungestMetSoFar)
{
    Cache one(3, 1);
    fill(one, {5, 10, 7});
    one.add_image(4, image(4), 20);
    EXPECT_EQ(text_of(one), "3 1\n1 5\n2 10\n4 20\n\n");

    Cache two(6, 2);
    fill(two, {8, 3, 9, 5, 9, 4});
    two.shrink_by(2);
    // 3, 8; 9 is passed over; 5 for 8; 9 for 5; 4 for 9.
    EXPECT_EQ(text_of(two), "6 2\n1 8\n3 9\n4 5\n5 9\n\n");
}

TEST_F(mrImageCacheTest, EvictsWhatItMayWithAShrinkageOutOfRange)
{
    std::string const empty_list = "platform/co/coSortedList.cpp: object in incorrect state for operation "
                                   "|CO_SORTEDLIST::remove_last | empty";
    std::string const no_list = source + "List is empty!";
    std::string const incorrect = source + "Incorrect shrinkage";
    Cache rising(2, -3);
    fill(rising, {1, 2, 3, 4});
    EXPECT_EQ(reports(), (Reports{source + "Args", out_of_range, incorrect, out_of_range, incorrect}));
    EXPECT_EQ(rising.size(), 4);

    Cache equal(3, 0);
    fill(equal, {1, 1, 1, 1});
    EXPECT_EQ(reports(), (Reports{source + "Args", out_of_range, no_list, empty_list, no_list, incorrect}));
    EXPECT_EQ(text_of(equal), "3 0\n1 1\n2 1\n4 1\n\n");
}

TEST_F(mrImageCacheTest, IsRestoredWithEachAgeOnItsImage)
{
    Cache cache(4, 2);
    utClock::set(start + 500);
    cache.add_image(7, image(7), 100);
    cache.add_image(3, image(3), 400);
    cache.add_image(4000000000u, image(4), 300);
    cache.add_image(1, image(1), 50);
    cache.remove_image(7);
    cache.add_image(7, image(70), 350);
    std::string const text = "4 2\n3 400\n-294967296 300\n1 50\n7 350\n\n";
    ASSERT_EQ(text_of(cache), text);
    std::string const written = read_bytes(path);

    Cache restored;
    ASSERT_EQ(restored.read(path.c_str()), mrFileMatReadOK);
    std::filesystem::remove(path);
    text_of(restored);
    EXPECT_EQ(read_bytes(path), written);
    for (auto const& [hash, number] : {std::pair{3u, 3}, {4000000000u, 4}, {1u, 1}, {7u, 70}}) {
        dgDuctImage* const found = restored.get_image(hash);
        EXPECT_EQ(pixel(*found, 0, 0)[0], number);
        EXPECT_STREQ(found->name(), "own");
        EXPECT_EQ(found->references(), 2) << "the reader's and the entry's";
    }
    ASSERT_EQ(restored.read(path.c_str()), mrFileMatReadOK);
    // The first to come evicted two, of one age by now.
    EXPECT_EQ(reports(), Reports({out_of_range, present, present}));
    EXPECT_EQ(text_of(restored), text);
}

TEST_F(mrImageCacheTest, EvictsTheOldestOnceItIsRestored)
{
    Cache cache(4, 2);
    fill(cache, {10, 20, 30, 40});
    text_of(cache);
    Cache restored;
    ASSERT_EQ(restored.read(path.c_str()), mrFileMatReadOK);
    restored.add_image(5, image(5), 50);
    EXPECT_EQ(text_of(restored), "4 2\n3 30\n4 40\n5 50\n\n");
}

TEST_F(mrImageCacheTest, ReportsWhatIsWrongInAFileAndGoesOn)
{
    Cache cache(9, 2);
    fill(cache, {10, 20});
    text_of(cache);

    std::string const limits = source + "1 or both vales are invalid";
    std::string const fields = source + "1 or both values are invalid";
    std::string const size = source + "Invalid Cache size";
    std::string const shrinkage = source + "Invalid shrinkage value";
    std::string const age = source + "Invalid age";
    std::string const number = source + "Expected same size";
    std::string const args = source + "Args";
    struct Case
    {
        std::string text;
        Reports reported;
        mrFileMatReadStatus status;
        std::string restored;
    };
    std::string const long_line(1018, '0');
    for (auto const& [text, reported, status, restored] : std::vector<Case>{
             {"9   2\n1   10\n2 +20\n\n", {}, mrFileMatReadOK, "9 2\n1 10\n2 20\n\n"},
             {"9 " + long_line + "002\n1 1\n2 2\n\n", {}, mrFileMatReadOK, "9 2\n1 1\n2 2\n\n"},
             {"9 " + long_line + "0002\n1 1\n\n", {}, mrFileMatBadContent, "9 0\n\n"},
             {"9 2\n1 " + long_line + "0001\n2 2\n\n", {}, mrFileMatBadContent, "9 2\n\n"},
             {"9\n1\n\n", {limits, fields, age, number, args}, mrFileMatReadOK, "9 0\n1 0\n\n"},
             {" 2\n\n", {limits, size, shrinkage, number}, mrFileMatReadOK, "0 2\n\n"},
             {"9 2\r\n1 -1\n2 9999999999\n\n", {age, age, args, args}, mrFileMatReadOK, "9 0\n1 -1\n2 0\n\n"},
             {"9 9\n1 1 1\n\n", {shrinkage, age, number, args}, mrFileMatReadOK, "9 9\n1 0\n\n"},
             {"9 2\n1 1\n2 2\n3 3\n\n", {number}, mrFileMatReadOK, "9 2\n1 1\n2 2\n\n"},
         }) {
        Cache found;
        EXPECT_EQ(read_with(text, found), status) << text;
        EXPECT_EQ(reports(), reported) << text;
        EXPECT_EQ(text_of(found), restored) << text;
        text_of(cache);
    }
}

TEST_F(mrImageCacheTest, AFileThatCannotBeOpenedChangesNothing)
{
    Cache cache(9, 2);
    for (std::string const& unwritable : {folder.path("missing/cache"), std::string("/dev/full")})
        EXPECT_EQ(cache.write(unwritable.c_str()), 0) << unwritable;
    EXPECT_TRUE(reports().empty());

    EXPECT_EQ(cache.read(""), mrFileMatOpenFailed);
    EXPECT_EQ(cache.write(utString()), 0);
    EXPECT_EQ(reports(), Reports(3, out_of_range));
    EXPECT_EQ(cache.max_cache_size(), 9);
}

TEST_F(mrImageCacheTest, EvictsTheOldestButTheNewestOfOneSecond)
{
    for (auto const& [seconds, left] : {std::pair{1, "10 3\n4 4\n5 5\n6 6\n7 7\n8 8\n9 9\n10 10\n11 11\n\n"},
                                        {0, "10 3\n1 0\n2 0\n3 0\n4 0\n5 0\n6 0\n7 0\n11 0\n\n"}}) {
        Cache cache(10, 3);
        for (int hash = 1; hash <= 11; ++hash) {
            utClock::set(start + seconds * hash);
            cache.add_image(static_cast<unsigned int>(hash), image(1));
        }
        EXPECT_EQ(text_of(cache), left);
    }
    EXPECT_EQ(images[0]->references(), 2);
}

TEST_F(mrImageCacheTest, LeavesImagesOutThatCannotBeWritten)
{
    Image const empty(new dgDuctImage("", 0, 0));
    empty->reference();
    Cache cache(9, 2);
    fill(cache, {10, 20});
    cache.add_image(3, empty.get(), 30);
    cache.add_image(4, nullptr, 40);
    cache.add_image(5, image(5), 50);
    reports();
    EXPECT_EQ(text_of(cache), "9 2\n1 10\n2 20\n3 30\n4 40\n5 50\n\n");
    EXPECT_EQ(reports(), Reports{item + "Invalid image!"});
    Cache restored;
    EXPECT_EQ(restored.read(path.c_str()), mrFileMatReadOK);
    EXPECT_EQ(reports(), Reports{source + "Expected same size"});
    EXPECT_EQ(restored.size(), 2);
}
