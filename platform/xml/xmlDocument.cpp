#include "xmlDocument.h"

#include <utility>

xmlElement& xmlDocument::create_element(utString const& name)
{
    return m_content->elements.emplace_back(*this, *m_content->names.insert(name).first);
}

xmlText& xmlDocument::create_text_node(utString text)
{
    return m_content->texts.emplace_back(std::move(text));
}
