#include "xmlDocument.h"

#include "coHash.h"

#include <deque>
#include <unordered_set>
#include <utility>

// The nodes are destroyed one after the other, so that no depth of the tree matters.
struct xmlDocument::Nodes
{
    std::unordered_set<utString, coBucketHash<utString>> names;
    std::deque<xmlElement> elements;
    std::deque<xmlText> texts;
};

xmlDocument::xmlDocument() : m_nodes(std::make_unique<Nodes>()) {}

xmlDocument::~xmlDocument() = default;

xmlElement& xmlDocument::create_element(utString const& name)
{
    return m_nodes->elements.emplace_back(*this, *m_nodes->names.insert(name).first);
}

xmlText& xmlDocument::create_text_node(utString text)
{
    return m_nodes->texts.emplace_back(std::move(text));
}

std::size_t xmlDocument::name_count() const
{
    return m_nodes->names.size();
}

void xmlDocument::clear()
{
    m_root = nullptr;
    // Each before the next, since there may be little memory beside them; and none is asked for.
    m_nodes->elements.clear();
    m_nodes->texts.clear();
    m_nodes->names.clear();
}
