// XML: a document that parses can be written, and what is written parses to the same.
#include "fuzz.h"

#include "xmlParser.h"
#include "xmlWriter.h"

#include <algorithm>
#include <sstream>
#include <vector>

namespace {

bool parse(std::string const& text, xmlDocument& document)
{
    return xmlParser().parse(utString(text), document) != 0;
}

/// The node's children, but for the white space that writing puts between elements.
std::vector<xmlNode const*> children_of(xmlNode const& node)
{
    std::vector<xmlNode const*> children;
    bool elements = false;
    for (std::size_t i = 0; i < node.child_nodes().length(); ++i) {
        children.push_back(&node.child_nodes().item(i));
        elements |= children.back()->element() != nullptr;
    }
    if (elements)
        std::erase_if(children, [](xmlNode const* child) {
            return !child->element() &&
                   child->node_value().view().find_first_not_of(" \n") == std::string::npos;
        });
    return children;
}

bool equal(xmlNode const* one, xmlNode const* other)
{
    std::vector<xmlNode const*> const children = children_of(*one);
    std::vector<xmlNode const*> const others = children_of(*other);
    return one->node_name() == other->node_name() && one->node_value() == other->node_value() &&
           std::equal(children.begin(), children.end(), others.begin(), others.end(), equal);
}

} // namespace

void try_input(std::string const& bytes)
{
    xmlDocument document;
    if (!parse(bytes, document))
        return;
    std::ostringstream written;
    xmlWriter(&document).write(written);
    xmlDocument again;
    require(parse(written.str(), again), "a document that was written parses");
    require(equal(document.document_element(), again.document_element()),
            "a document is the same when it is written and read");
}
