#include "xmlUtils.h"

#include "utUTF8.h"

#include <algorithm>
#include <string>
#include <utility>

namespace {

void collect(xmlElement const& parent, utString const& name, std::vector<xmlElement const*>& found)
{
    xmlNodeList const& children = parent.child_nodes();
    for (std::size_t i = 0; i < children.length(); ++i) {
        xmlElement const* const child = children.item(i).element();
        if (child && child->node_name() == name)
            found.push_back(child);
    }
}

/// U+2400 and on, one for each control character.
constexpr char32_t control_pictures = 0x2400;

bool cannot_be_carried(char character)
{
    auto const byte = static_cast<unsigned char>(character);
    return byte < 32 && byte != '\t' && byte != '\n' && byte != '\r';
}

} // namespace

std::vector<xmlElement const*> xmlUtils::find_child_elements_by_name(xmlElement const& element,
                                                                     utString const& name)
{
    std::vector<xmlElement const*> found;
    collect(element, name, found);
    return found;
}

std::vector<xmlElement const*> xmlUtils::find_grandchild_elements_by_name(xmlElement const& element,
                                                                          utString const& parent_name,
                                                                          utString const& name)
{
    std::vector<xmlElement const*> found;
    for (xmlElement const* parent : find_child_elements_by_name(element, parent_name))
        collect(*parent, name, found);
    return found;
}

xmlElement& xmlUtils::append_child_element(xmlElement& element, utString const& name)
{
    xmlElement& child = element.owner_document().create_element(name);
    element.append_child(child);
    return child;
}

xmlElement& xmlUtils::append_child_text_element(xmlElement& element, utString const& name,
                                                utString const& text)
{
    xmlElement& child = element.owner_document().create_element(name);
    if (!text.empty())
        child.append_child(element.owner_document().create_text_node(text));
    element.append_child(child);
    return child;
}

utString xmlUtils::carried(utString const& text)
{
    if (text.invalid())
        return text;
    std::string_view rest = text.view();
    std::string result;
    for (;;) {
        auto const end = std::find_if(rest.begin(), rest.end(), cannot_be_carried);
        result.append(rest.begin(), end);
        if (end == rest.end())
            return utString(std::move(result));
        utUTF8::append(result, control_pictures + static_cast<unsigned char>(*end));
        rest.remove_prefix(static_cast<std::size_t>(end - rest.begin()) + 1);
    }
}
