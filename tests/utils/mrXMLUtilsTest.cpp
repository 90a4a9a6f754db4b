#include "mrXMLUtils.h"

#include "materialText.h"
#include "mrFMFacet.h"

#include <cmath>
#include <tuple>

TEST(mrXMLUtils, TextIsThatOfTheFirstDirectChildWithContent)
{
    Parsed const parsed(
        "<r><b><a>deeper</a></b><a/><a><!-- --></a><a>first</a><a>later</a><c><d/>text</c></r>");
    utString out;
    EXPECT_EQ(mrXMLUtils::find_child_text_string(parsed.root(), "a", out), 1);
    EXPECT_EQ(out, "first");
    for (char const* name : {"missing", "b", "c"}) {
        out = "old";
        EXPECT_EQ(mrXMLUtils::find_child_text_string(parsed.root(), name, out), 0) << name;
        EXPECT_TRUE(out.invalid()) << name;
    }
}

TEST(mrXMLUtils, RangesIncludeTheirBoundsAndWhatIsBeyondIsStored)
{
    Parsed const parsed("<r><i>7</i><blank> 7</blank><d>2.5</d><nan>64bAAAAAAAA+H8=</nan></r>");
    int number = 1;
    EXPECT_EQ(mrXMLUtils::find_child_text_integer_range(parsed.root(), "blank", 0, 9, number), 0);
    EXPECT_EQ(number, 1);
    EXPECT_EQ(mrXMLUtils::find_child_text_integer_range(parsed.root(), "i", 8, 9, number), 0);
    EXPECT_EQ(number, 7);
    EXPECT_EQ(mrXMLUtils::find_child_text_integer_range(parsed.root(), "i", 7, 7, number), 1);

    double real = 0;
    EXPECT_EQ(mrXMLUtils::find_child_text_double_range(parsed.root(), "d", 2.5, 2.5, real), 1);
    EXPECT_EQ(mrXMLUtils::find_child_text_double_range(parsed.root(), "nan", 0, 1, real), 0);
    EXPECT_TRUE(std::isnan(real));
}

TEST(mrXMLUtils, DoublesInBase64AndInDecimal)
{
    constexpr double old = -3.0;
    auto const value_of = [](std::string const& text) {
        double out = old;
        int const result =
            mrXMLUtils::find_child_text_double(Parsed("<r><d>" + text + "</d></r>").root(), "d", out);
        EXPECT_EQ(result, out != old) << text;
        return out;
    };
    for (char const* half : {"64bAAAAAAAA4D8=", "0.5", "+5e-1"})
        EXPECT_EQ(value_of(half), 0.5) << half;
    for (char const* bad : {" 64bAAAAAAAA4D8=", "64b", "64b0.5", "0,5", "0.5 ", "nan", "1e999"})
        EXPECT_EQ(value_of(bad), old) << bad;
}

TEST(mrXMLUtils, AColourIsOneRgb8OfThreeBytes)
{
    std::string const good = "<c><rgb8><blue>3</blue><red>255</red><green>0</green></rgb8></c>";
    giColour out(1, 2, 3, 4);
    for (std::string const& bad :
         {with(good, "255", "256"), with(good, ">0", ">-1"), with(good, ">3", ">x"),
          with(good, "<red>255</red>", ""), with(good, "<c>", "<c><rgb8/>"), good + good})
        EXPECT_EQ(mrXMLUtils::find_named_colour(Parsed("<r>" + bad + "</r>").root(), "c", out), 0) << bad;
    EXPECT_EQ(out, giColour(1, 2, 3, 4));
    EXPECT_EQ(mrXMLUtils::find_named_colour(Parsed("<r>" + good + "</r>").root(), "c", out), 1);
    EXPECT_EQ(out, giColour(255, 0, 3, 0));
}

TEST(mrXMLUtils, DocumentIsCutOutOfAStream)
{
    using namespace std::string_literals;
    std::string const longest(1022 - 3, 'x');
    using Case = std::tuple<std::string, int, std::string>;
    for (auto const& [stream, result, text] : {
             Case{"junk\n <m>a\n\nb</m> \nPNG", 1, " <m>a\n\nb</m> \n"},
             Case{"<m></m>", 1, "<m></m>\n"},
             Case{"<m>" + longest + "\n</m>\n", 1, "<m>" + longest + "\n</m>\n"},
             Case{"<m>\0</m>\n</m>\n"s, 1, "<m>\0</m>\n</m>\n"s},
             Case{"<m>" + longest + "x\n</m>\n", 0, ""},
             Case{"<m>\n" + longest + longest + "</m>\n", 0, "<m>\n"},
             Case{"<m a='b'>\n</m>\n", 0, ""},
             Case{"<m>\na\n", 0, "<m>\na\n"},
             Case{"", 0, ""},
         }) {
        std::istringstream in(stream);
        utString out;
        EXPECT_EQ(mrXMLUtils::read_doc(in, "m", out), result) << stream;
        EXPECT_EQ(out.view(), text);
        EXPECT_TRUE(!stream.ends_with("PNG") || in.tellg() == 19) << "just past the line break";
    }
}

TEST(mrXMLUtils, PropertiesOfAllCollectionsOrNone)
{
    std::string const a = written(string_prop("a", "1"));
    std::string const b = written(string_prop("b", "2"));
    auto set = properties({string_prop("old", "0")});
    EXPECT_EQ(mrXMLUtils::read_properties(Parsed("<r/>").root(), set), 1);
    Parsed const good("<r><properties>" + a + "</properties><property/><properties>" + b + a +
                      "</properties></r>");
    EXPECT_EQ(mrXMLUtils::read_properties(good.root(), set), 1);
    EXPECT_TRUE(set == properties({string_prop("old", "0"), string_prop("a", "1"), string_prop("b", "2")}));
    Parsed const bad("<r><properties>" + a + "<property/></properties></r>");
    EXPECT_EQ(mrXMLUtils::read_properties(bad.root(), set), 0);
    EXPECT_TRUE(set.empty()) << "members of before are gone too";
}

TEST(mrXMLUtils, AFacetThatFailsTakesAllOthersAlong)
{
    mrFMFacetcoDListPtrcoPtrcoDList facets;
    facets.append(new mrFMFacet(red(), {}));
    Parsed const bad("<r><facets>" + written(**facets.begin()) + "<facet/></facets></r>");
    EXPECT_EQ(mrXMLUtils::read_facets(bad.root(), facets), 0);
    EXPECT_TRUE(facets.empty()); // that each was deleted is for the leak checker to see
}
