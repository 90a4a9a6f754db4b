#include "mrXMLUtils.h"

#include "mrTest.h"

#include "utString.h"

#include <sstream>
#include <streambuf>
#include <tuple>

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
