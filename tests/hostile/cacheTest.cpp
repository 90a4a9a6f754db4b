// Image cache files made to harm their reader.
#include "confined.h"
#include "rawPNG.h"
#include "readers.h"

#include <tuple>

using namespace std::literals;

namespace {

/// Lines or entries; fewer where everything takes ten times as long.
constexpr int million = sanitized ? 50'000 : 1'000'000;
std::string const million_words = sanitized ? "50,000" : "1,000,000";
constexpr int many = sanitized ? 500 : 5'000;
std::string const many_words = sanitized ? "500" : "5,000";

std::string image(int number)
{
    return RawPNG{.before = chunk("tEXt", "Title\0"s + std::to_string(number))}.bytes();
}

/// A file of entries, the age of each a step above that of the one before it, and all above that of the entry
/// that read_cache() has beforehand.
std::string cache_file(std::string const& limits, int count, int step)
{
    std::string text = limits + '\n';
    std::string images;
    for (int i = 1; i <= count; ++i) {
        text += std::to_string(i) + ' ' + std::to_string(1'000'000 + step * i) + '\n';
        images += image(i);
    }
    return text + '\n' + images;
}

using HostileCache = HostileFile;

} // namespace

TEST_F(HostileCache, Lines)
{
    std::string const long_line(2000, '1');
    for (auto const& [title, bytes, outcome] : {
             std::tuple{"limits of 2,000 characters"s, long_line + "\n1 1\n\n", "bad content, 1 entries"},
             {"an entry of 2,000 characters", "9 2\n" + long_line + "\n\n", "bad content, 1 entries"},
             {million_words + " entries without an image", "9 2\n" + repeated("1 1\n", million) + "\n",
              "read, 1 entries"},
             {million_words + " entries without an end", "9 2\n" + repeated("1 1\n", million),
              "bad content, 1 entries"},
             {"a line of NULs without an end", std::string(std::size_t{1} << 23, '\0'),
              "bad content, 1 entries"},
         })
        expect(title, bytes, read_cache, outcome);
}

TEST_F(HostileCache, Limits)
{
    for (auto const& [title, bytes, outcome] : {
             std::tuple{"a size of 2,147,483,647", cache_file("2147483647 2147483646", 3, 1),
                        "read, 4 entries"},
             {"a size and a shrinkage of -2,147,483,648", cache_file("-2147483648 -2147483648", 3, 1),
              "read, 4 entries"},
             {"numbers beyond an int", "9 2\n99999999999 99999999999\n\n" + image(5), "read, 2 entries"},
         })
        expect(title, bytes, read_cache, outcome, 3);
}

TEST_F(HostileCache, ManyEvictions)
{
    auto const read = [](int count) { return "read, " + std::to_string(count) + " entries"; };
    expect(many_words + " entries, a shrinkage of 0 and rising ages", cache_file("5 0", many, 1), read_cache,
           read(many + 1), many);
    expect(many_words + " entries, half of them evicted one by one, of falling ages",
           cache_file(std::to_string(many / 2) + " 1", many, -1), read_cache, read(many / 2), many);
}
