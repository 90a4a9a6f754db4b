#include "xmlParser.h"

#include "mrTest.h"

#include <string>
#include <string_view>

using namespace std::literals;

namespace {

/// The nodes as text again: elements in brackets, each text in bars.
std::string shown(xmlNode const& node)
{
    std::string text(node.element() ? "(" : "|");
    text += node.element() ? node.node_name().view() : node.node_value().view();
    for (std::size_t i = 0; i < node.child_nodes().length(); ++i)
        text += shown(node.child_nodes().item(i));
    text += node.element() ? ')' : '|';
    return text;
}

/// The document as shown, or "error: " and why there is none.
std::string read(std::string_view text)
{
    xmlDocument document;
    xmlParser parser;
    if (parser.parse(utString(text), document)) {
        EXPECT_TRUE(parser.error().invalid());
        return shown(*document.document_element());
    }
    EXPECT_EQ(document.document_element(), nullptr);
    return "error: " + std::string(parser.error().view());
}

std::string nested(int depth)
{
    std::string text;
    for (int i = 0; i < depth; ++i)
        text += "<a>";
    for (int i = 0; i < depth; ++i)
        text += "</a>";
    return text;
}

struct Case
{
    std::string_view text;
    std::string_view result;
};

} // namespace

TEST(XmlParser, KeepsTextsAsTheyAreAndDropsWhatIsNoElementOrText)
{
    Case const cases[] = {
        {"<r> <a>1</a>\n <b/>\t</r>", "(r| |(a|1|)|\n |(b)|\t|)"},
        {"<r>one<!-- not this -->two<?nor this?>three<![CDATA[<&]]>]]&gt;</r>", "(r|onetwothree<&]]>|)"},
        {"<r><!----></r>", "(r)"},
        {"<r>&lt;&gt;&amp;&quot;&apos;&#65;&#x20AC;&#13;</r>", "(r|<>&\"'A\xE2\x82\xAC\r|)"},
        {"<r>a\r\nb\rc</r>", "(r|a\nb\nc|)"},
        {"<r a='1' b=\"&lt;\"><c d=''/></r>", "(r(c))"},
        {"<?xml version=\"1.0\"?>\n<!-- x --><r/>\n\n", "(r)"},
        {" \n<r></r> \t", "(r)"},
    };
    for (Case const& each : cases)
        EXPECT_EQ(read(each.text), each.result) << each.text;
}

TEST(XmlParser, TakesTextAsUtf8WhateverTheDeclarationSays)
{
    for (auto const declaration : {"", "\xEF\xBB\xBF", "<?xml version='1.0' encoding='UTF-16'?>",
                                   "<?xml version='1.0' encoding='ISO-8859-1'?>",
                                   "\xEF\xBB\xBF<?xml version='1.0' encoding='no-such-thing'?>"})
        EXPECT_EQ(read(declaration + "<r>\xC3\xA9\xF0\x9F\x8E\xA8</r>"s), "(r|\xC3\xA9\xF0\x9F\x8E\xA8|)")
            << declaration;
}

TEST(XmlParser, HandsBackTheBytesOfTextThatIsNoUtf8)
{
    std::string every_byte;
    for (int byte = 0x80; byte < 0x100; ++byte)
        every_byte += static_cast<char>(byte);
    EXPECT_EQ(read("<r>" + every_byte + "</r>"), "(r|" + every_byte + "|)");

    Case const cases[] = {
        {"<r\xE9>\xE9<a/>\xC3\xA9</r\xE9>", "(r\xE9|\xE9|(a)|\xC3\xA9|)"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='UTF-8'?><r>\xE9</r>", "(r|\xE9|)"},
        {"<r>\xEF\xBF\xBE \xEF\xBF\xBF</r>", "(r|\xEF\xBF\xBE \xEF\xBF\xBF|)"}, // U+FFFE, U+FFFF
        {"<r>\xED\xA0\x80\xC0\x80\xF4\x90\x80\x80</r>", "(r|\xED\xA0\x80\xC0\x80\xF4\x90\x80\x80|)"},
        {"<r>\xE9&#233;&#x20AC;</r>", "(r|\xE9\xE9\xE2\x82\xAC|)"},
        {"<r>cut short\xC3</r>", "(r|cut short\xC3|)"},
    };
    for (Case const& each : cases)
        EXPECT_EQ(read(each.text), each.result) << each.text;
}

TEST(XmlParser, RefusesWithLineColumnAndReason)
{
    Case const cases[] = {
        {"", "error: line 1, column 1: no element found"},
        {"<a>\n <b></a>", "error: line 2, column 7: mismatched tag"},
        {"<a/><b/>", "error: line 1, column 5: junk after document element"},
        {"<a>&copy;</a>", "error: line 1, column 4: undefined entity"},
        {"<a>&#0;</a>", "error: line 1, column 4: reference to invalid character number"},
        {"<a b='1' b='2'/>", "error: line 1, column 10: duplicate attribute"},
        {"<!DOCTYPE a><a/>", "error: line 1, column 12: document type declarations are refused"},
        {"<!DOCTYPE a [<!ENTITY e 'e'>]><a>&e;</a>",
         "error: line 1, column 13: document type declarations are refused"},
        {"<!DOCTYPE a SYSTEM '/etc/passwd'><a/>",
         "error: line 1, column 33: document type declarations are refused"},
        {"<a>\xE9\n</b>", "error: line 2, column 3: mismatched tag"},
        {"<a>\0</a>"sv, "error: not well-formed: the text holds a NUL"},
        {"\xFF\xFE<\0a\0/\0>\0"sv, "error: not well-formed: the text holds a NUL"},
        {"<\0a\0/\0>\0"sv, "error: not well-formed: the text holds a NUL"},
    };
    for (Case const& each : cases)
        EXPECT_EQ(read(each.text), each.result) << each.text;
}

TEST(XmlParser, BoundsTheDepth)
{
    EXPECT_EQ(read(nested(xmlParser::max_depth)).substr(0, 4), "(a(a");
    EXPECT_EQ(read(nested(xmlParser::max_depth + 1)), "error: line 1, column 769: elements nested too deep");
    EXPECT_EQ(read(nested(100000)), "error: line 1, column 769: elements nested too deep");

    std::string const full = nested(xmlParser::max_depth);
    std::string one_more = full;
    one_more.insert(3 * xmlParser::max_depth, "<a/>");
    EXPECT_EQ(read(one_more), "error: line 1, column 769: elements nested too deep");
}

TEST(XmlParser, SurvivesTextThatIsCutOrChanged)
{
    std::string const whole = "<?xml version='1.0'?><r a='\xC3\xA9'><!-- c --><b>t&#x20AC;&amp;</b>"
                              "<![CDATA[x]]><?p i?>\xE2\x82\xAC<c/></r>";
    ASSERT_EQ(read(whole), "(r(b|t\xE2\x82\xAC&|)|x\xE2\x82\xAC|(c))");

    for (std::size_t length = 0; length < whole.size(); ++length)
        EXPECT_EQ(read(whole.substr(0, length)).substr(0, 6), "error:") << length;
    for (std::size_t at = 0; at < whole.size(); ++at)
        for (char const changed : {'<', '\xE9', '\0'}) {
            std::string text = whole;
            text[at] = changed;
            read(text); // any outcome but a fault
        }
}

TEST(XmlParser, StartsAnewWithEachText)
{
    xmlDocument document;
    xmlParser parser;
    ASSERT_TRUE(parser.parse("<old><a/></old>", document));
    ASSERT_TRUE(parser.parse("<new>\xE9</new>", document));
    EXPECT_EQ(shown(*document.document_element()), "(new|\xE9|)");
    EXPECT_FALSE(parser.parse("<new", document));
    EXPECT_EQ(document.document_element(), nullptr);
    EXPECT_FALSE(parser.parse(utString(), document));
    ASSERT_TRUE(parser.parse("<r/>", document));
    EXPECT_TRUE(parser.error().invalid());
}
