#include "xmlDocument.h"

#include "mrTest.h"

TEST(XmlDocument, KnowsItsNodesByTypeNameAndValue)
{
    xmlDocument document;
    EXPECT_EQ(document.document_element(), nullptr);

    xmlElement& root = document.create_element("root");
    document.append_child(root);
    xmlText& text = document.create_text_node("words");
    EXPECT_EQ(root.first_child(), nullptr);
    root.append_child(text);
    root.append_child(document.create_element("leaf"));

    EXPECT_EQ(document.document_element(), &root);
    EXPECT_EQ(&root.owner_document(), &document);
    EXPECT_EQ(root.node_type(), 1);
    EXPECT_EQ(root.node_name(), "root");
    EXPECT_TRUE(root.node_value().invalid());
    EXPECT_EQ(root.element(), &root);
    ASSERT_EQ(root.child_nodes().length(), 2u);
    EXPECT_EQ(&root.child_nodes().item(0), &text);
    EXPECT_EQ(root.child_nodes().item(1).node_name(), "leaf");

    EXPECT_EQ(text.node_type(), xmlTextNode);
    EXPECT_EQ(text.node_name(), "#text");
    EXPECT_EQ(text.node_value(), "words");
    EXPECT_EQ(text.element(), nullptr);
    EXPECT_EQ(text.child_nodes().length(), 0u);

    document.clear();
    EXPECT_EQ(document.document_element(), nullptr);
}

TEST(XmlDocument, KeepsChildrenInOrderAndNamesOnce)
{
    xmlDocument document;
    xmlElement& root = document.create_element("root");
    for (int i = 0; i < 1000; ++i)
        root.append_child(document.create_element(i % 2 ? "odd" : "even"));

    ASSERT_EQ(root.child_nodes().length(), 1000u);
    for (std::size_t i = 0; i < 1000; ++i)
        EXPECT_EQ(root.child_nodes().item(i).node_name(), i % 2 ? "odd" : "even") << i;
    EXPECT_EQ(&root.child_nodes().item(1).node_name(), &root.child_nodes().item(999).node_name());
}
