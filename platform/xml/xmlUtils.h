// Finding and making elements.
#pragma once

#include "utExport.h"
#include "utString.h"
#include "xmlDocument.h"

#include <vector>

class UT_API xmlUtils
{
public:
    /// The direct children of the name, in document order.
    static std::vector<xmlElement const*> find_child_elements_by_name(xmlElement const& element,
                                                                      utString const& name);

    /// The children named @p name of all children named @p parent_name, in document order.
    static std::vector<xmlElement const*> find_grandchild_elements_by_name(xmlElement const& element,
                                                                           utString const& parent_name,
                                                                           utString const& name);

    /// @return the new element, empty
    static xmlElement& append_child_element(xmlElement& element, utString const& name);

    /// Appends an element that holds a text node with the string; an invalid or empty string makes the
    /// element without a text node, so that reading gives the same in memory and through a file.
    /// @return the new element
    static xmlElement& append_child_text_element(xmlElement& element, utString const& name,
                                                 utString const& text);

    /// The text with its picture, U+2400 and the code in UTF-8, in the place of every character that XML cannot
    /// carry: NUL and the control characters below 32 other than tab, line feed and carriage return. These bytes
    /// come back from a text in an 8-bit encoding too. An invalid string stays invalid.
    static utString carried(utString const& text);
};
