#include "mrElementReader.h"

utString const* mrElementReader::find_text(xmlElement const& element, utString const& name)
{
    xmlNodeList const& children = element.child_nodes();
    for (std::size_t i = 0; i < children.length(); ++i) {
        xmlNode const& child = children.item(i);
        if (child.node_type() != xmlElementNode || !(child.node_name() == name))
            continue;
        if (xmlNode const* const content = child.first_child())
            return content->node_value().invalid() ? nullptr : &content->node_value();
    }
    return nullptr;
}

int mrElementReader::read_string(utString const& name, utString& out) const
{
    utString const* const text = find_text(m_element, name);
    if (text)
        out = *text;
    else
        out.set_invalid();
    return text || fail(name, "empty");
}

int mrElementReader::read_integer(utString const& name, int& out) const
{
    return mrXMLUtils::find_child_text_integer(m_element, name, out) || fail(name, "no integer");
}

int mrElementReader::read_flag(utString const& name, int& out) const
{
    return mrXMLUtils::find_child_text_integer_range(m_element, name, 0, 1, out) ||
           fail(name, "neither 0 nor 1");
}

int mrElementReader::read_double(utString const& name, double most, char const* flaw, double& out) const
{
    return mrXMLUtils::find_child_text_double_range(m_element, name, 0.0, most, out) || fail(name, flaw);
}

int mrElementReader::read_colour(utString const& name, giColour& out) const
{
    return mrXMLUtils::find_named_colour(m_element, name, out) ||
           fail(name, "not one colour \"rgb8\" of three numbers from 0 to 255");
}

int mrElementReader::fail(utString const& name, char const* flaw) const
{
    return m_fault ? refuse(ut_concat("\"", name, "\" is missing or ", flaw)) : 0;
}

int mrElementReader::refuse(std::string const& reason) const
{
    if (m_fault)
        *m_fault = {.reason = utString(reason), .line = m_element.line()};
    return 0;
}
