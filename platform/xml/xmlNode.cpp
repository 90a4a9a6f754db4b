#include "xmlNode.h"

#include <utility>

namespace {

utString const text_name = "#text";
utString const no_value;
xmlNodeList const no_children;

} // namespace

utString const& xmlNode::node_value() const
{
    return m_type == xmlTextNode ? static_cast<xmlText const*>(this)->m_value : no_value;
}

xmlNodeList const& xmlNode::child_nodes() const
{
    return m_type == xmlElementNode ? static_cast<xmlElement const*>(this)->m_children : no_children;
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

xmlText::xmlText(xmlDocument& document, utString text)
    : xmlNode(document, xmlTextNode, text_name), m_value(std::move(text))
{}

xmlElement::xmlElement(xmlDocument& document, utString const& name) : xmlNode(document, xmlElementNode, name)
{}

void xmlElement::append_child(xmlNode& child)
{
    m_children.m_nodes.push_back(&child);
}
