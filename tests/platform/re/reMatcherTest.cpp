#include "reMatcher.h"

#include "mrTest.h"

#include <tuple>

namespace {

struct Compiled : reMatcher
{
    explicit Compiled(char const* pattern) : reMatcher(pattern)
    {
        utString error;
        int position = 0;
        EXPECT_EQ(compile(0, error, position), 1) << error.c_str();
    }
};

} // namespace

TEST(reMatcher, CountsTheGroupsUpToTheHighestThatTookPart)
{
    Compiled matcher("(a)(b)?(c)?(d)?");
    using Case = std::tuple<char const*, int, std::vector<utString>>;
    for (auto const& [text, count, groups] :
         {Case{"xacx", 4, {"ac", "a", {}, "c", {}, {}}}, Case{"abcd", 5, {"abcd", "a", "b", "c", "d", {}}},
          Case{"bcd", 0, {{}, {}, {}}}}) {
        EXPECT_EQ(matcher.match(text, 0), count) << text;
        for (std::size_t n = 0; n < groups.size(); ++n)
            EXPECT_EQ(matcher.get_substring(static_cast<int>(n)), groups[n]) << text << ' ' << n;
    }
    EXPECT_EQ(matcher.match("aba", 1), 2);
    for (int const start : {3, 4, -1})
        EXPECT_EQ(matcher.match("aba", start), 0) << start;
    EXPECT_TRUE(matcher.get_substring(0).invalid());
}

TEST(reMatcher, GivesUpWhereAMatchTakesTooLong)
{
    Compiled matcher("^(a+)+$");
    EXPECT_EQ(matcher.match(utString(std::string(5000, 'a') + 'b'), 0), 0);
    EXPECT_EQ(matcher.match("aaa", 0), 2);
}
