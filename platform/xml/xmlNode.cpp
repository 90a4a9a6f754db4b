#include "xmlNode.h"

#include "utNeverDestroyed.h"

#include <utility>

namespace {

utNeverDestroyed<utString> const text_name("#text");
utNeverDestroyed<utString> const no_value;
utNeverDestroyed<xmlNodeList> const no_children;

// Of an element that holds more than one node, white space included.
constexpr std::size_t usual_length = 8;

} // namespace

void xmlNodeList::append(xmlNode& node)
{
    if (!m_only) {
        m_only = &node;
        return;
    }
    if (!m_nodes) {
        auto several = std::make_unique<std::vector<xmlNode*>>();
        several->reserve(usual_length);
        several->push_back(m_only);
        m_nodes = std::move(several);
    }
    m_nodes->push_back(&node);
}

utString const& xmlNode::node_name() const
{
    return m_type == xmlElementNode ? *static_cast<xmlElement const*>(this)->m_name : *text_name;
}

utString const& xmlNode::node_value() const
{
    return m_type == xmlTextNode ? static_cast<xmlText const*>(this)->m_value : *no_value;
}

xmlNodeList const& xmlNode::child_nodes() const
{
    return m_type == xmlElementNode ? static_cast<xmlElement const*>(this)->m_children : *no_children;
}

xmlNode const* xmlNode::first_child() const
{
    xmlNodeList const& children = child_nodes();
    return children.length() ? &children.item(0) : nullptr;
}

xmlElement const* xmlNode::element() const
{
    return m_type == xmlElementNode ? static_cast<xmlElement const*>(this) : nullptr;
}

xmlText::xmlText(utString text) : xmlNode(xmlTextNode), m_value(std::move(text)) {}

xmlElement::xmlElement(xmlDocument& document, utString const& name)
    : xmlNode(xmlElementNode), m_document(&document), m_name(&name)
{}

void xmlElement::append_child(xmlNode& child)
{
    m_children.append(child);
}
