// Palette files made to harm their reader.
#include "confined.h"
#include "readers.h"

namespace {

/// Lines; fewer where everything takes ten times as long.
constexpr int many = sanitized ? 50'000 : 1'000'000;
std::string const many_words = sanitized ? "50,000" : "1,000,000";
constexpr std::size_t large = sanitized ? 10'000'000 : 100'000'000;

using HostilePalette = HostileFile;

} // namespace

TEST_F(HostilePalette, Lines)
{
    std::string const colour = "rgb8 1 2 3\n";
    expect("zeros", std::string(large, '\0'), read_palette, "read, 0 colours");
    expect("a colour, and a line without an end", colour + std::string(large, '1'), read_palette,
           "read, 1 colours");
    // Nothing that matches an expression up to its last character may take long to be found out.
    expect("a line of digits and spaces", "cmyk " + repeated("1 ", 500) + "\r1\n", read_palette,
           "bad format, 0 colours");
    std::string text;
    for (int i = 0; i < many; ++i)
        text += "cmyk 0 0 0 9 " + std::to_string(i) + '\n';
    expect(many_words + " colours, the last with the name of the first", text + "rgb8 1 1 1 0\n",
           read_palette, "duplicate name, " + std::to_string(many) + " colours");
}

TEST_F(HostilePalette, MoreColoursThanThereIsMemoryFor)
{
    if (sanitized)
        GTEST_SKIP() << "the sanitizer needs all memory";
    write_bytes(path, repeated("rgb8 0 0 0\n", 3 * many));
    std::string const fewer = folder.path("fewer.pcp");
    write_bytes(fewer, repeated("rgb8 0 0 0\n", 1000));
    EXPECT_EQ(confined({"3,000,000 colours in 64 MiB", 0},
                       [&] {
                           std::string const outcome = read_palette(path);
                           return outcome.substr(0, outcome.find(',')) + ", then " + read_palette(fewer);
                       }),
              "bad format, then read, 1000 colours");
}
