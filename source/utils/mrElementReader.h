// Reads the children that an element must have. Used inside the library.
#pragma once

#include "mrFault.h"
#include "mrXMLUtils.h"

#include "utConcat.h"
#include "xmlUtils.h"

/// Reads the children of one element. Each function returns 1, or 0 with a fault that names the child and the element's
/// line; each may throw std::bad_alloc.
class mrElementReader
{
public:
    /// @param fault  receives the first fault unless null; borrowed
    mrElementReader(xmlElement const& element, mrFault* fault) : m_element(element), m_fault(fault) {}

    xmlElement const& element() const { return m_element; }

    /// Finds the text of the first child of the name that has a child node.
    /// @return borrowed; null when no such child is there, or its first node is no text
    static utString const* find_text(xmlElement const& element, utString const& name);

    /// @param out  the text, or invalid
    int read_string(utString const& name, utString& out) const;
    int read_integer(utString const& name, int& out) const;
    int read_flag(utString const& name, int& out) const;
    int read_double(utString const& name, double most, char const* flaw, double& out) const;
    int read_colour(utString const& name, giColour& out) const;

    /// @param flaw  the fault of a child with another text: "not \"colour\""
    template <class Enum>
    int read_enum(utString const& name, int (*parser)(utString const&, int&), char const* flaw,
                  Enum& out) const
    {
        int value = out;
        if (!mrXMLUtils::find_child_text_enum(m_element, name, parser, value))
            return fail(name, flaw);
        out = static_cast<Enum>(value);
        return 1;
    }

    /// Notes that the child is missing or has the flaw.
    /// @return 0
    int fail(utString const& name, char const* flaw) const;
    /// Notes another reason.
    /// @return 0
    int refuse(std::string const& reason) const;

    /// Reads the members of the element's collections, in document order, until one fails.
    /// @param read  reads one member and notes its fault
    template <class Read>
    int read_members(utString const& collection, utString const& member, Read const& read) const
    {
        int number = 0;
        for (xmlElement const* each :
             xmlUtils::find_grandchild_elements_by_name(m_element, collection, member)) {
            ++number;
            if (read(*each))
                continue;
            if (m_fault)
                m_fault->within(utString(ut_concat(member, " ", number)));
            return 0;
        }
        return 1;
    }

private:
    xmlElement const& m_element;
    mrFault* m_fault;
};
