#include "xmlUtils.h"

#include "mrTest.h"

TEST(XmlUtils, MakesNoTextNodeAndCarriesNothingWhereThereIsNoText)
{
    xmlDocument document;
    xmlElement& root = document.create_element("r");
    for (utString const& none : {utString(), utString("")}) {
        EXPECT_EQ(xmlUtils::append_child_text_element(root, "a", none).first_child(), nullptr);
        EXPECT_EQ(xmlUtils::carried(none), none);
    }
}
