// An XML document in memory.
#pragma once

#include "utExport.h"
#include "utString.h"
#include "xmlNode.h"

#include <deque>
#include <memory_resource>
#include <optional>
#include <set>

/// A tree of nodes, all of them owned by the document whether they have a place in the tree or not.
class UT_API xmlDocument
{
public:
    xmlDocument() { clear(); }
    xmlDocument(xmlDocument const&) = delete;
    xmlDocument& operator=(xmlDocument const&) = delete;

    /// A new element without a place in the tree.
    xmlElement& create_element(utString const& name);
    /// A new text without a place in the tree.
    xmlText& create_text_node(utString text);

    /// Makes the element the document's one root.
    void append_child(xmlElement& root) { m_content->root = &root; }

    /// The root, or null while there is none.
    xmlElement const* document_element() const { return m_content->root; }

    /// Destroys every node; the document is as new.
    void clear() { m_content.emplace(); }

private:
    struct NameOrder
    {
        bool operator()(utString const& first, utString const& second) const
        {
            return first.view() < second.view();
        }
    };

    // Each name is kept once, in order rather than by hash, so that no choice of names makes finding them
    // slow. Nodes stand in blocks, which are let go all at once, and are destroyed one after the other, so
    // that no depth of the tree matters.
    struct Content
    {
        std::pmr::monotonic_buffer_resource memory;
        std::set<utString, NameOrder> names;
        std::pmr::deque<xmlElement> elements{&memory};
        std::pmr::deque<xmlText> texts{&memory};
        xmlElement* root = nullptr;
    };

    std::optional<Content> m_content;
};
