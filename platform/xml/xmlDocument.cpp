#include "xmlDocument.h"

#include "coHash.h"

#include <deque>
#include <unordered_set>
#include <utility>

namespace {

/// Names that are looked for again. A document of more was made to harm, and an index of them all would take
/// more room than keeping a name for each element that has one of the others.
constexpr std::size_t max_shared_names = 4096;

} // namespace

// The nodes are destroyed one after the other, so that no depth of the tree matters.
struct xmlDocument::Nodes
{
    utString const& keep_name(utString const& name);

    std::unordered_set<utString, coBucketHash<utString>> shared_names;
    std::deque<utString> other_names;
    std::deque<xmlElement> elements;
    std::deque<xmlText> texts;
};

utString const& xmlDocument::Nodes::keep_name(utString const& name)
{
    auto const known = shared_names.find(name);
    if (known != shared_names.end())
        return *known;
    if (shared_names.size() < max_shared_names)
        return *shared_names.insert(name).first;
    return other_names.emplace_back(name);
}

xmlDocument::xmlDocument() : m_nodes(std::make_unique<Nodes>()) {}

xmlDocument::~xmlDocument() = default;

xmlElement& xmlDocument::create_element(utString const& name)
{
    return m_nodes->elements.emplace_back(*this, m_nodes->keep_name(name));
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
