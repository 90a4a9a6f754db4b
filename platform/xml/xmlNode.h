// The nodes of an XML document.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <cstddef>
#include <memory>
#include <vector>

class xmlDocument;
class xmlElement;
class xmlNode;

/// Nodes in document order, borrowed from their document.
class UT_API xmlNodeList
{
public:
    std::size_t length() const { return m_nodes ? m_nodes->size() : m_only ? 1 : 0; }
    /// @param index  0 to length() - 1
    xmlNode const& item(std::size_t index) const { return m_nodes ? *(*m_nodes)[index] : *m_only; }

private:
    friend class xmlElement;

    void append(xmlNode& node);

    // Most elements hold one text or nothing: they need no room beside the list, and little in it.
    xmlNode* m_only = nullptr;
    std::unique_ptr<std::vector<xmlNode*>> m_nodes; // where there are several, all of them
};

enum xmlNodeType
{
    xmlElementNode = 1,
    xmlTextNode = 3
};

/// An element or a text. Made by its document, which owns it.
///
/// A document has many of them: each kind holds only what it needs, and names are kept by the document.
class UT_API xmlNode
{
public:
    xmlNode(xmlNode const&) = delete;
    xmlNode& operator=(xmlNode const&) = delete;

    xmlNodeType node_type() const { return m_type; }

    /// The element's name; "#text" for a text.
    utString const& node_name() const;

    /// The text, its line breaks as xmlParser left them; an invalid string for an element.
    utString const& node_value() const;

    /// None for a text.
    xmlNodeList const& child_nodes() const;
    /// Null when the node has no child.
    xmlNode const* first_child() const;

    /// This node as an element, or null.
    xmlElement const* element() const;

protected:
    explicit xmlNode(xmlNodeType type) : m_type(type) {}
    ~xmlNode() = default;

private:
    xmlNodeType m_type;
};

class UT_API xmlText : public xmlNode
{
public:
    /// For xmlDocument::create_text_node.
    explicit xmlText(utString text);

private:
    friend class xmlNode;

    utString m_value;
};

class UT_API xmlElement : public xmlNode
{
public:
    /// For xmlDocument::create_element.
    /// @param name  lives as long as the element
    xmlElement(xmlDocument& document, utString const& name);

    xmlDocument& owner_document() const { return *m_document; }

    /// The line of the text in which its tag begins, from 1; 0 for an element that was not parsed.
    int line() const { return m_line; }
    void set_line(int line) { m_line = line; }

    /// Makes the node this element's last child. It must be of the same document and in no place yet.
    void append_child(xmlNode& child);

private:
    friend class xmlNode;

    int m_line = 0; // beside the type: an element takes no more room for it
    xmlDocument* m_document;
    utString const* m_name;
    xmlNodeList m_children;
};
