#include "utString.h"

#include "mrTest.h"

#include <cmath>
#include <limits>
#include <locale>
#include <string>
#include <string_view>
#include <tuple>
#include <utility>

using namespace std::literals;

namespace {

/// What is refused leaves the number what it was.
template <class Number>
void expect_parsed(std::initializer_list<std::pair<std::string, Number>> cases,
                   std::initializer_list<std::string_view> refused)
{
    Number parsed{};
    for (auto const& [text, value] : cases) {
        EXPECT_EQ(utString(text).parse(parsed), 1) << text;
        EXPECT_EQ(parsed, value) << text;
    }
    parsed = 77;
    for (std::string_view const text : refused) {
        EXPECT_EQ(utString(text).parse(parsed), 0) << text;
        EXPECT_EQ(parsed, 77) << text;
    }
}

} // namespace

TEST(utString, TellsInvalidFromEmpty)
{
    utString const invalid(static_cast<char const*>(nullptr));
    utString const empty = "";
    EXPECT_TRUE(invalid.invalid() && invalid.empty());
    EXPECT_FALSE(empty.invalid());
    EXPECT_FALSE(invalid == empty);
    for (utString const& none : {invalid, empty}) {
        utString text = "some";
        text.set_invalid();
        EXPECT_EQ(text, invalid);
        text += none;
        EXPECT_EQ(text, empty);
    }
}

TEST(utString, HoldsAnyBytes)
{
    utString text("a\0\xFF"sv);
    text += '\0';
    text += "b";
    EXPECT_EQ(text.view(), "a\0\xFF\0b"sv);
    EXPECT_EQ(text.locate_substring("\0b"sv), 3);
    EXPECT_EQ(text.locate_substring("ab"), -1);
    text.remove_sub_string(1, 3);
    EXPECT_EQ(text, "ab");
    text.remove_sub_string(3, 1);
    text.remove_sub_string(1, 100);
    EXPECT_EQ(text, "a");
}

TEST(utString, RemovesCharactersAtItsEnds)
{
    for (auto const& [text, without_leading, without_trailing] :
         {std::tuple(" ~ a b~ ", "a b~ ", " ~ a b"), std::tuple("  ", "", ""),
          std::tuple<char const*, char const*, char const*>(nullptr, nullptr, nullptr)}) {
        EXPECT_EQ(utString(text).remove_leading_chars("~ "), utString(without_leading));
        EXPECT_EQ(utString(text).remove_trailing_chars("~ "), utString(without_trailing));
    }
}

TEST(utString, ParsesIntegersWholeOrNotAtAll)
{
    expect_parsed<int>({{"+5", 5},
                        {"-0012", -12},
                        {"2147483647", 2147483647},
                        {"-2147483648", std::numeric_limits<int>::min()}},
                       {"", "+", "-", "+-5", "--5", " 5", "5 ", "5.", "0x10", "1,000", "2147483648",
                        "-2147483649", "99999999999999999999", "5\0"sv});
}

TEST(utString, ParsesNumbersWholeOrNotAtAll)
{
    expect_parsed<double>({{"-1.", -1.0},
                           {"+.5", 0.5},
                           {"1.5E+2", 150.0},
                           {"1.7976931348623157e308", std::numeric_limits<double>::max()},
                           {"5e-324", std::numeric_limits<double>::denorm_min()},
                           {"1e-99999999999999999999", 0.0},
                           {"0e99999", 0.0},
                           {"1" + std::string(400, '0') + "e-400", 1.0},
                           {"." + std::string(399, '0') + "1e400", 1.0}},
                          {"", "+.", ".e5", "1e+", "1.5.2", "+-5", " 5", "5 ", "inf", "nan", "-INF", "0x1",
                           "1e5f", "-1e400", "1e99999999999999999999"});
    double parsed = 0.0;
    EXPECT_EQ(utString("-1e-400").parse(parsed), 1);
    EXPECT_TRUE(std::signbit(parsed));
}

TEST(utString, ReadsAndWritesNumbersTheSameInEveryLocale)
{
    // Numbers as some countries write them.
    class CommaNumbers : public std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
        std::string do_grouping() const override { return "\3"; }
    };
    std::locale const before = std::locale::global({std::locale::classic(), new CommaNumbers});
    expect_parsed<double>({{"1.5", 1.5}, {"1.5e-400", 0.0}}, {"1,5"});
    utString text;
    text.append_integer(1234567).append_integer(-1).append_integer(std::numeric_limits<int>::min());
    EXPECT_EQ(text, "1234567-1-2147483648");
    std::locale::global(before);
}
