#include "xmlWriter.h"

#include "mrTest.h"
#include "xmlParser.h"
#include "xmlUtils.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

using namespace std::literals;

namespace {

constexpr std::string_view line_break = "<!--\n-->";

std::string written(xmlDocument const& document)
{
    std::ostringstream out;
    EXPECT_EQ(xmlWriter(&document).write(out), 1);
    return out.str();
}

std::string written_leaf(std::string_view text)
{
    xmlDocument document;
    xmlElement& root = document.create_element("multimat");
    document.append_child(root);
    xmlUtils::append_child_text_element(root, "value", utString(text));
    return written(document);
}

/// The text of the one leaf after reading, "none" where it has no text node.
std::string read_leaf(std::string const& file)
{
    xmlDocument document;
    xmlParser parser;
    if (!parser.parse(utString(file), document))
        return "error: " + std::string(parser.error().view());
    auto const leaves = xmlUtils::find_child_elements_by_name(*document.document_element(), "value");
    xmlNodeList const& nodes = leaves.at(0)->child_nodes();
    EXPECT_LE(nodes.length(), 1u);
    return nodes.length() ? std::string(nodes.item(0).node_value().view()) : "none";
}

std::string rewritten(std::string const& file)
{
    xmlDocument document;
    EXPECT_TRUE(xmlParser().parse(utString(file), document));
    return written(document);
}

std::size_t longest_line(std::string const& file)
{
    std::size_t longest = 0;
    std::istringstream lines(file);
    for (std::string line; std::getline(lines, line);)
        longest = std::max(longest, line.size());
    return longest;
}

std::string repeated(std::string_view text, std::size_t count)
{
    std::string all;
    for (std::size_t i = 0; i < count; ++i)
        all += text;
    return all;
}

} // namespace

TEST(XmlWriter, WritesOneElementALine)
{
    xmlDocument document;
    xmlElement& root = document.create_element("multimat");
    document.append_child(root);
    xmlUtils::append_child_text_element(root, "name", "a<b>&\"c'");
    xmlElement& group = xmlUtils::append_child_text_element(root, "group", "");
    xmlUtils::append_child_text_element(group, "empty", "");
    xmlUtils::append_child_text_element(group, "blank", " \t");

    EXPECT_EQ(written(document), "<multimat>\n"
                                 "  <name>a&lt;b&gt;&amp;\"c'</name>\n"
                                 "  <group>\n"
                                 "    <empty></empty>\n"
                                 "    <blank> \t</blank>\n"
                                 "  </group>\n"
                                 "</multimat>\n");
}

TEST(XmlWriter, AddsNothingBesideTextThatStandsAmongElements)
{
    for (std::string const text :
         {"<r>a<b>c<d></d></b><e><f></f></e> g</r>\n", "<r>\n <a>1</a>\n\n<b><c></c></b></r>\n", "<r></r>\n"})
        EXPECT_EQ(rewritten(text), text);

    std::string const long_line = "<r>-" + repeated("<name>text</name>", 500) + "</r>\n";
    std::string file = rewritten(long_line);
    EXPECT_LE(longest_line(file), xmlWriter::max_line);
    for (std::size_t at = file.find(line_break); at != std::string::npos; at = file.find(line_break))
        file.erase(at, line_break.size());
    EXPECT_EQ(file, long_line);
}

TEST(XmlWriter, BringsEveryTextBack)
{
    std::string every_byte;
    for (int byte = 32; byte < 256; ++byte)
        every_byte += static_cast<char>(byte);
    for (std::string const& text :
         {every_byte, " "s, "\n lead and trail\r\n\t"s, "]]>"s,
          "<!-- --><![CDATA[x]]>&#13;&amp;\n</multimat>\n"s, "\xC3\xA9 and \xE9"s, "\xEF\xBF\xBE"s,
          repeated("x", 100000), repeated("\x80", 100000), repeated("\r", 5000), repeated("a\n", 5000),
          repeated("\xE2\x82\xAC\xE9<", 9000)}) {
        std::string const file = written_leaf(text);
        EXPECT_EQ(read_leaf(file), text);
        EXPECT_LE(longest_line(file), xmlWriter::max_line) << text.substr(0, 20);
    }
    EXPECT_EQ(read_leaf(written_leaf("")), "none");
    EXPECT_EQ(read_leaf(written_leaf("\0a\x1f"sv)), "?a?");
}

TEST(XmlWriter, BreaksLinesOnlyWhereTheyWouldGrowTooLong)
{
    struct Unit
    {
        std::string_view text;
        std::size_t written_size;
    };
    for (auto const& [unit, size] : {Unit{"x", 1}, Unit{"&", 5}, Unit{"\xC3\xA9", 2}, Unit{"\xE2\x82\xAC", 3},
                                     Unit{"\xF0\x9F\x8E\xA8", 4}, Unit{"\x80", 1}}) {
        std::size_t longest = 0;
        // Texts that end everywhere about the end of a first, second and third line.
        for (std::size_t lead = 0; lead < 5; ++lead)
            for (std::size_t line = 1; line <= 3; ++line)
                for (std::size_t room = 0; room < 50; ++room) {
                    std::size_t const count = (line * xmlWriter::max_line - room) / size;
                    std::string const text = repeated("y", lead) + repeated(unit, count);
                    std::string const file = written_leaf(text);
                    ASSERT_EQ(read_leaf(file), text) << unit << " " << lead << " " << count;
                    longest = std::max(longest, longest_line(file));
                }
        EXPECT_EQ(longest, xmlWriter::max_line) << unit;
    }
    EXPECT_EQ(written_leaf(repeated("x", 1000)).find("<!--"), std::string::npos);
}

TEST(XmlWriter, PartsNoUtf8Character)
{
    std::string const file = written_leaf(repeated("\xE2\x82\xAC", 2000));
    std::size_t breaks = 0;
    for (std::size_t at = file.find("<!--"); at != std::string::npos; at = file.find("<!--", at + 1)) {
        EXPECT_EQ(file.substr(at - 3, 14), "\xE2\x82\xAC<!--\n-->\xE2\x82\xAC");
        ++breaks;
    }
    EXPECT_EQ(breaks, 5u);
}

TEST(XmlWriter, TakesAnyDepth)
{
    xmlDocument document;
    xmlElement* deepest = &document.create_element("a");
    document.append_child(*deepest);
    for (int i = 0; i < 20000; ++i)
        deepest = &xmlUtils::append_child_text_element(*deepest, "a", "");
    std::string const file = written(document);
    EXPECT_EQ(std::count(file.begin(), file.end(), '\n'), 2 * 20000 + 1);
    EXPECT_EQ(longest_line(file), xmlWriter::max_indent + "<a></a>"s.size());
}

TEST(XmlWriter, SaysWhenItCouldNotWrite)
{
    std::ostringstream out;
    xmlDocument document;
    EXPECT_EQ(xmlWriter(&document).write(out), 0);
    EXPECT_EQ(out.str(), "");

    document.append_child(document.create_element("r"));
    out.setstate(std::ios::badbit);
    EXPECT_EQ(xmlWriter(&document).write(out), 0);
}
