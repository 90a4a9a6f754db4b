// Image cache files made to harm their reader.
#include "confined.h"
#include "rawPNG.h"
#include "readers.h"

#include "mrTest.h"

using namespace std::literals;

namespace {

/// Lines or entries; fewer where everything takes ten times as long.
constexpr int million = sanitized ? 50'000 : 1'000'000;
std::string const million_words = sanitized ? "50,000" : "1,000,000";
constexpr int many = sanitized ? 500 : 5'000;
std::string const many_words = sanitized ? "500" : "5,000";

std::string repeated(std::string const& unit, int count)
{
    std::string text;
    for (int i = 0; i < count; ++i)
        text += unit;
    return text;
}

std::string image(int number)
{
    return RawPNG{.before = chunk("tEXt", "Title\0"s + std::to_string(number))}.bytes();
}

/// Above that of the entry that read_cache() has beforehand.
constexpr int first_age = 1'000'000;

/// A file of entries, the age of each a step above that of the one before it.
std::string cache_file(std::string const& limits, int count, int step, int base = first_age)
{
    std::string text = limits + '\n';
    std::string images;
    for (int i = 1; i <= count; ++i) {
        text += std::to_string(i) + ' ' + std::to_string(base + step * i) + '\n';
        images += image(i);
    }
    return text + '\n' + images;
}

class HostileCache : public testing::Test
{
protected:
    void expect(std::string const& name, std::string const& bytes, std::string const& outcome,
                std::int64_t pixels = 0)
    {
        write_bytes(path, bytes);
        EXPECT_EQ(confined({name, static_cast<std::int64_t>(bytes.size()), pixels},
                           [this] { return read_cache(path); }),
                  outcome)
            << name;
    }

    TestFolder const folder;
    std::string const path = folder.path("hostile.cache");
};

} // namespace

TEST_F(HostileCache, Lines)
{
    std::string const long_line(2000, '1');
    expect("limits of 2,000 characters", long_line + "\n1 1\n\n", "bad content, 1 entries");
    expect("an entry of 2,000 characters", "9 2\n" + long_line + "\n\n", "bad content, 1 entries");
    expect(million_words + " entries without an image", "9 2\n" + repeated("1 1\n", million) + "\n",
           "read, 1 entries");
    expect(million_words + " entries without fields", "9 2\n" + repeated(" \n", million) + "\n",
           "read, 1 entries");
    expect(million_words + " entries without an end", "9 2\n" + repeated("1 1\n", million),
           "bad content, 1 entries");
    expect("a line of NULs without an end", std::string(std::size_t{1} << 23, '\0'),
           "bad content, 1 entries");
    expect("an empty file", "", "bad content, 1 entries");
}

TEST_F(HostileCache, Limits)
{
    expect("a size of 2,147,483,647", cache_file("2147483647 2147483646", 3, 1), "read, 4 entries", 3);
    expect("a shrinkage of 2,147,483,647", cache_file("2 2147483647", 3, 1), "read, 2 entries", 3);
    expect("a size and a shrinkage of -2,147,483,648", cache_file("-2147483648 -2147483648", 3, 1),
           "read, 4 entries", 3);
    expect("ages of -2,147,483,648", cache_file("9 2", 3, 0, -2147483647 - 1), "read, 4 entries", 3);
    expect("numbers beyond an int", "9 2\n99999999999 99999999999\n\n" + image(5), "read, 2 entries", 1);
}

TEST_F(HostileCache, ManyEvictions)
{
    expect(many_words + " entries, a shrinkage of 0 and rising ages", cache_file("5 0", many, 1),
           "read, " + std::to_string(many + 1) + " entries", many);
    expect(many_words + " entries, a shrinkage of 0 and equal ages", cache_file("5 0", many, 0),
           "read, 5 entries", many);
    expect(many_words + " entries, half of them evicted one by one, of falling ages",
           cache_file(std::to_string(many / 2) + " 1", many, -1),
           "read, " + std::to_string(many / 2) + " entries", many);
    expect("an image and no age, often", "9 2\n\n" + repeated(image(1), 10 * many), "read, 1 entries",
           10 * many);
}

TEST_F(HostileCache, ImagesThatNoEntryTookAreLetGo)
{
    std::uint32_t const side = 4096;
    std::string const large = RawPNG{.width = side,
                                     .height = side,
                                     .depth = 1,
                                     .before = chunk("tEXt", "Title\0006"s),
                                     .rows = std::string((side / 8 + 1) * side, '\0')}
                                  .bytes();
    std::int64_t const pixels = std::int64_t{side} * side;
    for (std::string const& end : {""s, "ten bytes."s}) {
        std::string const bytes = "9 2\n\n" + large + end;
        write_bytes(path, bytes);
        std::string const outcome = end.empty() ? "read, 1 entries" : "bad content, 1 entries";
        std::string const good = folder.path("good.cache");
        write_bytes(good, "9 2\n\n" + large);
        EXPECT_EQ(
            confined({"an image without an age, five times", static_cast<std::int64_t>(bytes.size()), pixels},
                     [&] {
                         for (int i = 0; i < 4; ++i)
                             if (read_cache(path) != outcome)
                                 return "read " + std::to_string(i);
                         // One that needs the memory of one image more.
                         return read_cache(good);
                     }),
            "read, 1 entries");
    }
}
