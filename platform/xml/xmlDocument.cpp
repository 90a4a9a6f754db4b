#include "xmlDocument.h"

#include <deque>
#include <memory_resource>
#include <set>
#include <utility>

namespace {

struct NameOrder
{
    bool operator()(utString const& first, utString const& second) const
    {
        return first.view() < second.view();
    }
};

} // namespace

// The nodes stand in blocks, which are let go all at once, and are destroyed one after the other, so that no
// depth of the tree matters. Each name is kept once, in order rather than by hash, so that no choice of names
// makes finding them slow.
struct xmlDocument::Nodes
{
    std::set<utString, NameOrder> names;
    std::pmr::monotonic_buffer_resource memory;
    std::pmr::deque<xmlElement> elements{&memory};
    std::pmr::deque<xmlText> texts{&memory};
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

void xmlDocument::clear()
{
    m_root = nullptr;
    m_nodes.reset(); // first, since there may be little memory beside it
    m_nodes = std::make_unique<Nodes>();
}
