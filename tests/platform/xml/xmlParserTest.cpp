#include "xmlParser.h"

#include "mrTest.h"
#include "utConcat.h"

#include <string>
#include <string_view>
#include <utility>
#include <vector>

using namespace std::literals;

namespace {

/// The nodes as text again: elements in brackets, each text in bars.
std::string shown(xmlNode const& node)
{
    bool const is_element = node.node_type() == xmlElementNode;
    EXPECT_EQ(node.element() != nullptr, is_element);
    EXPECT_EQ(node.node_value().invalid(), is_element);
    std::string text(is_element ? "(" : "|");
    text += is_element ? node.node_name().view() : node.node_value().view();
    for (std::size_t i = 0; i < node.child_nodes().length(); ++i)
        text += shown(node.child_nodes().item(i));
    text += is_element ? ')' : '|';
    return text;
}

/// The document as shown, or "error: " and why there is none.
std::string read(std::string_view text)
{
    xmlDocument document;
    xmlParser parser;
    if (parser.parse(utString(text), document)) {
        EXPECT_TRUE(parser.error().reason.invalid());
        return shown(*document.document_element());
    }
    EXPECT_EQ(document.document_element(), nullptr);
    xmlParser::Error const& error = parser.error();
    std::string const place =
        error.line > 0 ? ut_concat("line ", error.line, ", column ", error.column, ": ") : "";
    return ut_concat("error: ", place, error.reason);
}

/// Each a text and what reading it gives.
void expect_read(std::vector<std::pair<std::string_view, std::string_view>> const& cases)
{
    for (auto const& [text, result] : cases)
        EXPECT_EQ(read(text), result) << text;
}

} // namespace

TEST(xmlParser, KeepsTextsAsTheyAreAndDropsWhatIsNoElementOrText)
{
    expect_read({
        {"<r> <a>1</a>\n <b/>\t</r>", "(r| |(a|1|)|\n |(b)|\t|)"},
        {"<r>one<!-- not this -->two<?nor this?>three<![CDATA[<&]]>]]&gt;</r>", "(r|onetwothree<&]]>|)"},
        {"<r>&lt;&gt;&amp;&quot;&apos;&#65;&#x20AC;&#13;</r>", "(r|<>&\"'A\xE2\x82\xAC\r|)"},
        {"<r>\xEF\xBF\xBE \xEF\xBF\xBF</r>", "(r|\xEF\xBF\xBE \xEF\xBF\xBF|)"}, // U+FFFE, U+FFFF
        {"<r a='1' b=\"&lt;\">a\r\nb\rc<c d=''/></r>", "(r|a\nb\nc|(c))"},
        {"\xEF\xBB\xBF<?xml version='1.0' encoding='no-such-thing'?><r>\xC3\xA9</r>", "(r|\xC3\xA9|)"},
    });
}

TEST(xmlParser, HandsBackTheBytesOfTextThatIsNoUtf8)
{
    std::string every_byte;
    for (int byte = 0x80; byte < 0x100; ++byte)
        every_byte += static_cast<char>(byte);
    EXPECT_EQ(read("<r>" + every_byte + "</r>"), "(r|" + every_byte + "|)");
}

TEST(xmlParser, RefusesWithLineColumnAndReason)
{
    expect_read({
        {"<a>\xE9\n</b>", "error: line 2, column 3: mismatched tag"},
        {"<!DOCTYPE a [<!ENTITY e 'e'>]><a>&e;</a>",
         "error: line 1, column 13: document type declarations are refused"},
        {"<a>\0</a>"sv, "error: not well-formed: the text holds a NUL"},
    });
}

TEST(xmlParser, BoundsTheDepth)
{
    std::string text;
    for (int i = 0; i < xmlParser::max_depth; ++i)
        text = "<a>" + text + "</a>";
    EXPECT_EQ(read(text).substr(0, 4), "(a(a");
    text.insert(3 * xmlParser::max_depth, "<a/>");
    EXPECT_EQ(read(text), "error: line 1, column 769: elements nested too deep");
}
