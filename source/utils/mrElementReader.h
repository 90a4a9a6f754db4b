// Reading what an element must have, with words for what it lacks. Used inside the library.
#pragma once

#include "mrFault.h"
#include "mrXMLUtils.h"

#include "xmlDocument.h"
#include "xmlUtils.h"

/// The children of one element. Each function gives 1, or 0 with a fault that names the child and the element's line.
class mrElementReader
{
public:
    /// @param fault  receives the first fault; borrowed
    mrElementReader(xmlElement const& element, mrFault& fault) : m_element(element), m_fault(fault) {}

    int read_string(utString const& name, utString& out) const;
    int read_integer(utString const& name, int& out) const;
    int read_flag(utString const& name, int& out) const;
    int read_double(utString const& name, double most, char const* wanted, double& out) const;
    int read_colour(utString const& name, giColour& out) const;

    /// @param wanted  what is wrong when the child is there: "not \"colour\""
    template <class Enum>
    int read_enum(utString const& name, int (*parser)(utString const&, int&), char const* wanted,
                  Enum& out) const
    {
        int value = out;
        if (!mrXMLUtils::find_child_text_enum(m_element, name, parser, value))
            return fail(name, wanted);
        out = static_cast<Enum>(value);
        return 1;
    }

    /// Notes that a child is missing or not as wanted.
    /// @return 0
    int fail(utString const& name, char const* wanted) const;
    /// Notes another reason.
    /// @return 0
    int refuse(std::string const& reason) const;

    /// Reads the members of the element's collections, in document order, until one fails.
    /// @param read  reads a member, with the same fault
    template <class Read>
    int read_members(utString const& collection, utString const& member, Read const& read) const
    {
        int number = 0;
        for (xmlElement const* each :
             xmlUtils::find_grandchild_elements_by_name(m_element, collection, member)) {
            ++number;
            if (!read(*each))
                return fail_within(member, number);
        }
        return 1;
    }

private:
    int fail_within(utString const& member, int number) const;

    xmlElement const& m_element;
    mrFault& m_fault;
};
