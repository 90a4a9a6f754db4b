// An XML document in memory.
#pragma once

#include "utExport.h"
#include "utString.h"
#include "xmlNode.h"

#include <cstddef>
#include <memory>

/// A tree of nodes, all of them owned by the document whether they have a place in the tree or not.
class UT_API xmlDocument
{
public:
    xmlDocument();
    ~xmlDocument();
    xmlDocument(xmlDocument const&) = delete;
    xmlDocument& operator=(xmlDocument const&) = delete;

    /// A new element without a place in the tree.
    xmlElement& create_element(utString const& name);
    /// A new text without a place in the tree.
    xmlText& create_text_node(utString text);

    /// Makes the element the document's one root.
    void append_child(xmlElement& root) { m_root = &root; }

    /// The root element; null in a new document.
    xmlElement const* document_element() const { return m_root; }

    /// How many different names its elements have.
    std::size_t name_count() const;

    /// Destroys every node; the document is as new.
    void clear();

private:
    struct Nodes;

    std::unique_ptr<Nodes> m_nodes;
    xmlElement* m_root = nullptr;
};
