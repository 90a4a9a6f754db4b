#include "utString.h"

#include "mrTest.h"

#include <cmath>
#include <limits>
#include <locale>
#include <string>
#include <string_view>

using namespace std::literals;

namespace {

/// Numbers as some countries write them: 1.234,5.
class CommaNumbers : public std::numpunct<char>
{
    char do_decimal_point() const override { return ','; }
    char do_thousands_sep() const override { return '.'; }
    std::string do_grouping() const override { return "\3"; }
};

class CommaLocale
{
public:
    CommaLocale() : m_previous(std::locale::global({std::locale::classic(), new CommaNumbers})) {}
    ~CommaLocale() { std::locale::global(m_previous); }

private:
    std::locale m_previous;
};

} // namespace

TEST(UtString, TellsInvalidFromEmpty)
{
    utString const invalid;
    utString const empty = "";
    EXPECT_TRUE(invalid.invalid());
    EXPECT_TRUE(utString(static_cast<char const*>(nullptr)).invalid());
    EXPECT_FALSE(empty.invalid());
    EXPECT_TRUE(invalid.empty());
    EXPECT_TRUE(empty.empty());
    EXPECT_EQ(invalid.length(), 0u);
    EXPECT_STREQ(invalid.c_str(), "");
    EXPECT_EQ(invalid, utString());
    EXPECT_FALSE(invalid == empty);

    utString text = "some";
    text.set_invalid();
    EXPECT_EQ(text, invalid);
    text += "";
    EXPECT_EQ(text, empty);
    text.set_invalid();
    text += invalid;
    EXPECT_EQ(text, empty);
}

TEST(UtString, HoldsAnyBytes)
{
    utString text("a\0\xFF"sv);
    text += '\0';
    text += "b";
    EXPECT_EQ(text.view(), "a\0\xFF\0b"sv);
    EXPECT_EQ(text.length(), 5u);
    EXPECT_FALSE(text == utString("a\0\xFF\0c"sv));

    EXPECT_EQ(text.locate_substring("a"), 0);
    EXPECT_EQ(text.locate_substring("\0b"sv), 3);
    EXPECT_EQ(text.locate_substring("ab"), -1);
    EXPECT_EQ(utString().locate_substring("a"), -1);

    text.remove_sub_string(1, 3);
    EXPECT_EQ(text, "ab");
    text.remove_sub_string(2, 1);
    text.remove_sub_string(1, 100);
    EXPECT_EQ(text, "a");
}

TEST(UtString, ParsesIntegersWholeOrNotAtAll)
{
    struct Case
    {
        char const* text;
        int value;
    };
    for (auto const& [text, value] :
         {Case{"0", 0}, Case{"+5", 5}, Case{"-5", -5}, Case{"-0", 0}, Case{"0012", 12},
          Case{"2147483647", 2147483647}, Case{"-2147483648", std::numeric_limits<int>::min()}}) {
        int parsed = 77;
        EXPECT_EQ(utString(text).parse(parsed), 1) << text;
        EXPECT_EQ(parsed, value) << text;
    }
    for (char const* text : {"", "+", "-", "+-5", "-+5", "++5", "--5", " 5", "5 ", "5\n", "5.", "5e1", "0x10",
                             "five", "1,000", "2147483648", "-2147483649", "99999999999999999999"}) {
        int parsed = 77;
        EXPECT_EQ(utString(text).parse(parsed), 0) << text;
        EXPECT_EQ(parsed, 77) << text;
    }
    int parsed = 77;
    EXPECT_EQ(utString("5\0"sv).parse(parsed), 0);
    EXPECT_EQ(utString().parse(parsed), 0);
}

TEST(UtString, ParsesNumbersWholeOrNotAtAll)
{
    struct Case
    {
        std::string text;
        double value;
    };
    for (auto const& [text, value] : {
             Case{"0", 0.0},
             Case{"0.25", 0.25},
             Case{"+1.5", 1.5},
             Case{"-1.5", -1.5},
             Case{"1.", 1.0},
             Case{".5", 0.5},
             Case{"+.5", 0.5},
             Case{"1e3", 1000.0},
             Case{"1.5E+2", 150.0},
             Case{"5e-1", 0.5},
             Case{"0.1", 0.1},
             Case{"1.7976931348623157e308", std::numeric_limits<double>::max()},
             Case{"5e-324", std::numeric_limits<double>::denorm_min()},
             Case{"1e-400", 0.0},
             Case{"1e-99999999999999999999", 0.0},
             Case{"0e99999", 0.0},
             Case{"1" + std::string(400, '0') + "e-400", 1.0},
             Case{"." + std::string(399, '0') + "1e400", 1.0},
         }) {
        double parsed = 77.0;
        EXPECT_EQ(utString(text).parse(parsed), 1) << text;
        EXPECT_EQ(parsed, value) << text;
    }
    for (char const* text : {"",       "+",
                             "-",      ".",
                             "+.",     "e5",
                             ".e5",    "1e",
                             "1e+",    "1.5.2",
                             "+-5",    "--5",
                             " 5",     "5 ",
                             "1,5",    "inf",
                             "nan",    "-inf",
                             "INF",    "1d5",
                             "0x1",    "1e5f",
                             "1 000",  "1e400",
                             "-1e400", "1e99999999999999999999"}) {
        double parsed = 77.0;
        EXPECT_EQ(utString(text).parse(parsed), 0) << text;
        EXPECT_EQ(parsed, 77.0) << text;
    }
    double parsed = 0.0;
    EXPECT_EQ(utString("-1e-400").parse(parsed), 1);
    EXPECT_TRUE(std::signbit(parsed));
}

TEST(UtString, ReadsAndWritesNumbersTheSameInEveryLocale)
{
    CommaLocale const other_numbers;
    double parsed = 0.0;
    EXPECT_EQ(utString("1.5").parse(parsed), 1);
    EXPECT_EQ(parsed, 1.5);
    EXPECT_EQ(utString("1.5e-400").parse(parsed), 1);
    EXPECT_EQ(parsed, 0.0);
    EXPECT_EQ(utString("1,5").parse(parsed), 0);

    utString text;
    text.append_integer(1234567).append_integer(-1).append_integer(std::numeric_limits<int>::min());
    EXPECT_EQ(text, "1234567-1-2147483648");
}
