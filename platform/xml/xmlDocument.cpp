#include "xmlDocument.h"

#include <utility>

xmlElement& xmlDocument::create_element(utString const& name)
{
    return m_elements.emplace_back(*this, *m_names.insert(name).first);
}

xmlText& xmlDocument::create_text_node(utString text)
{
    return m_texts.emplace_back(*this, std::move(text));
}

void xmlDocument::clear()
{
    m_root = nullptr;
    m_elements.clear();
    m_texts.clear();
    m_names.clear();
}
