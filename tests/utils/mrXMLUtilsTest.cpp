#include "mrXMLUtils.h"

#include "materialText.h"

#include <streambuf>
#include <tuple>

TEST(mrXMLUtils, TextIsThatOfTheFirstDirectChildWithContent)
{
    Parsed const parsed(
        "<r><b><a>deeper</a></b><a/><a><!-- --></a><a>first</a><a>later</a><c><d/>text</c></r>");
    utString out;
    EXPECT_EQ(mrXMLUtils::find_child_text_string(parsed.root(), "a", out), 1);
    EXPECT_EQ(out, "first");
    for (char const* name : {"missing", "c"}) {
        out = "old";
        EXPECT_EQ(mrXMLUtils::find_child_text_string(parsed.root(), name, out), 0) << name;
        EXPECT_TRUE(out.invalid()) << name;
    }
}

TEST(mrXMLUtils, AColourIsOneRgb8OfThreeBytes)
{
    std::string const good = "<c><rgb8><blue>3</blue><red>255</red><green>0</green></rgb8></c>";
    giColour out(1, 2, 3, 4);
    for (std::string const& bad : {with(good, "255", "256"), with(good, ">0", ">-1"),
                                   with(good, "<red>255</red>", ""), with(good, "</c>", "<rgb8/></c>")})
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
             Case{"<m>" + longest + "\n</m>\n", 1, "<m>" + longest + "\n</m>\n"},
             Case{"<m>\0</m>\n</m>\n"s, 1, "<m>\0</m>\n</m>\n"s},
             Case{"<m>" + longest + "x\n</m>\n", 0, ""},
             Case{"<m>\na\n", 0, "<m>\na\n"},
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
    Parsed const good("<r><properties>" + a + "</properties><property/><properties>" + b + a +
                      "</properties></r>");
    EXPECT_EQ(mrXMLUtils::read_properties(good.root(), set), 1);
    EXPECT_TRUE(set == properties({string_prop("old", "0"), string_prop("a", "1"), string_prop("b", "2")}));
    Parsed const bad("<r><properties>" + a + "<property/></properties></r>");
    EXPECT_EQ(mrXMLUtils::read_properties(bad.root(), set), 0);
    EXPECT_TRUE(set.empty()) << "members of before are gone too";
}

TEST(mrXMLUtils, ADocumentWithoutEndIsGatheredUpToItsLimit)
{
    struct Endless : std::streambuf
    {
        std::string line = "<m>" + std::string(1000, 'x') + "\n";
        int_type underflow() override
        {
            setg(line.data(), line.data(), line.data() + line.size());
            return traits_type::to_int_type(line.front());
        }
    } endless;
    std::istream in(&endless);
    utString out;
    EXPECT_EQ(mrXMLUtils::read_doc(in, "m", out), 0);
    EXPECT_LE(out.length(), mrXMLUtils::max_document);
    EXPECT_GT(out.length(), mrXMLUtils::max_document - endless.line.size());
}
