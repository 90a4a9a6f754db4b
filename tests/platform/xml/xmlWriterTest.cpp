#include "xmlWriter.h"

#include "mrTest.h"
#include "xmlParser.h"
#include "xmlUtils.h"

#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>
#include <utility>

namespace {

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

/// The text of the one leaf after reading.
std::string read_leaf(std::string const& file)
{
    xmlDocument document;
    if (!xmlParser().parse(utString(file), document))
        return "unreadable";
    auto const leaves = xmlUtils::find_child_elements_by_name(*document.document_element(), "value");
    return leaves.at(0)->first_child()->node_value().c_str();
}

std::size_t longest_line(std::string const& file)
{
    std::size_t longest = 0;
    std::istringstream lines(file);
    for (std::string line; std::getline(lines, line);)
        longest = std::max(longest, line.size());
    return longest;
}

} // namespace

TEST(xmlWriter, BreaksLinesOnlyWhereTheyWouldGrowTooLongAndPartsNoCharacter)
{
    using Unit = std::pair<std::string_view, std::size_t>;
    for (auto const& [unit, written_size] :
         {Unit{"x", 1}, Unit{"&", 5}, Unit{"\xC3\xA9", 2}, Unit{"\xE2\x82\xAC", 3},
          Unit{"\xF0\x9F\x8E\xA8", 4}, Unit{"\x80", 1}, Unit{"a\x80\x80\x80", 4}}) {
        std::size_t longest = 0;
        // What follows "&amp;" begins everywhere about the end of a line and ends about that of the next.
        for (std::size_t lead = 985; lead < 1009; ++lead)
            for (std::size_t room = 0; room < 50; ++room) {
                std::size_t const count = (2 * xmlWriter::max_line - lead - room) / written_size;
                std::string text = std::string(lead, 'y') + "&";
                for (std::size_t i = 0; i < count; ++i)
                    text += unit;
                std::string const file = written_leaf(text);
                ASSERT_EQ(read_leaf(file), text) << unit << " " << lead << " " << count;
                longest = std::max(longest, longest_line(file));
                std::size_t at = unit.ends_with('\x80') ? std::string::npos : file.find("-->");
                for (; at != std::string::npos; at = file.find("-->", at + 1))
                    ASSERT_NE(file[at + 3] & 0xC0, 0x80) << unit << " " << lead;
            }
        EXPECT_EQ(longest, xmlWriter::max_line) << unit;
    }
}
