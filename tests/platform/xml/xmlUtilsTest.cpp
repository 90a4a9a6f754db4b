#include "xmlUtils.h"

#include "mrTest.h"
#include "xmlParser.h"

#include <string>

using namespace std::literals;

namespace {

std::string values(std::vector<xmlElement const*> const& elements)
{
    std::string all;
    for (xmlElement const* element : elements)
        all += element->first_child() ? element->first_child()->node_value().c_str() : "-";
    return all;
}

} // namespace

TEST(XmlUtils, FindsChildrenAndGrandchildrenByNameInOrder)
{
    xmlDocument document;
    xmlParser parser;
    ASSERT_TRUE(
        parser.parse("<r><a>1</a>text<b><a>2</a><c>3</c><a/></b><a>4</a><b><a>5</a></b><B><a>6</a></B>"
                     "<b><x><a>7</a></x></b></r>",
                     document));
    xmlElement const& root = *document.document_element();

    EXPECT_EQ(values(xmlUtils::find_child_elements_by_name(root, "a")), "14");
    EXPECT_EQ(values(xmlUtils::find_child_elements_by_name(root, "#text")), "");
    EXPECT_EQ(values(xmlUtils::find_grandchild_elements_by_name(root, "b", "a")), "2-5");
    EXPECT_EQ(values(xmlUtils::find_grandchild_elements_by_name(root, "c", "a")), "");
}

TEST(XmlUtils, AppendsAnElementWithoutATextNodeWhereThereIsNoText)
{
    xmlDocument document;
    xmlElement& root = document.create_element("r");

    xmlElement& full = xmlUtils::append_child_text_element(root, "full", " ");
    xmlUtils::append_child_text_element(root, "empty", "");
    xmlUtils::append_child_text_element(root, "invalid", utString());

    ASSERT_EQ(root.child_nodes().length(), 3u);
    EXPECT_EQ(&root.child_nodes().item(0), &full);
    EXPECT_EQ(full.first_child()->node_value(), " ");
    EXPECT_EQ(root.child_nodes().item(1).first_child(), nullptr);
    EXPECT_EQ(root.child_nodes().item(2).first_child(), nullptr);
}

TEST(XmlUtils, CarriesWhatXmlCan)
{
    EXPECT_EQ(xmlUtils::carried(utString("\0\1\x1f\t\n\r \x7f\x80\xff<"sv)),
              utString("???\t\n\r \x7f\x80\xff<"sv));
    EXPECT_TRUE(xmlUtils::carried(utString()).invalid());
    EXPECT_FALSE(xmlUtils::carried("").invalid());
}
