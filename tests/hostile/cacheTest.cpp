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
             {million_words + " entries without fields", "9 2\n" + repeated(" \n", million) + "\n",
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
             {"a shrinkage of 2,147,483,647", cache_file("2 2147483647", 3, 1), "read, 2 entries"},
             {"a size and a shrinkage of -2,147,483,648", cache_file("-2147483648 -2147483648", 3, 1),
              "read, 4 entries"},
             {"ages of -2,147,483,648", cache_file("9 2", 3, 0, -2147483647 - 1), "read, 4 entries"},
             {"numbers beyond an int", "9 2\n99999999999 99999999999\n\n" + image(5), "read, 2 entries"},
         })
        expect(title, bytes, read_cache, outcome, 3);
}

TEST_F(HostileCache, ManyEvictions)
{
    auto const read = [](int count) { return "read, " + std::to_string(count) + " entries"; };
    expect(many_words + " entries, a shrinkage of 0 and rising ages", cache_file("5 0", many, 1), read_cache,
           read(many + 1), many);
    expect(many_words + " entries, a shrinkage of 0 and equal ages", cache_file("5 0", many, 0), read_cache,
           read(5), many);
    expect(many_words + " entries, half of them evicted one by one, of falling ages",
           cache_file(std::to_string(many / 2) + " 1", many, -1), read_cache, read(many / 2), many);
    expect("an image and no age, often", "9 2\n\n" + repeated(image(1), 10 * many), read_cache, read(1),
           10 * many);
}

TEST_F(HostileCache, ImagesThatNoEntryTookAreLetGo)
{
    std::uint32_t const side = 4096;
    std::string const good = "9 2\n\n" + RawPNG{.width = side,
                                                .height = side,
                                                .depth = 1,
                                                .before = chunk("tEXt", "Title\0006"s),
                                                .rows = std::string((side / 8 + 1) * side, '\0')}
                                             .bytes();
    write_bytes(path, good);
    for (char const* end : {"", "ten bytes."}) {
        std::string const bytes = good + end;
        std::string const repeatedly = folder.path("repeatedly.cache");
        write_bytes(repeatedly, bytes);
        Hostile const input{"an image without an age, five times", static_cast<std::int64_t>(bytes.size()),
                            std::int64_t{side} * side};
        auto const read_five = [&] {
            for (int i = 0; i < 4; ++i)
                if (read_cache(repeatedly) != (*end ? "bad content, 1 entries" : "read, 1 entries"))
                    return "read " + std::to_string(i);
            return read_cache(path); // which needs the memory of one image more
        };
        EXPECT_EQ(confined(input, read_five), "read, 1 entries");
    }
}
