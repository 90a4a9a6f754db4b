// Writes the collections of a material file's elements. Used inside the library.
#pragma once

#include "mrGuard.h"

#include "xmlUtils.h"

/// Appends an element in which @p fill puts the members, last, so that nothing is changed without enough memory.
/// @return the element, or null without enough memory
template <class Fill>
xmlElement* mr_write_collection(xmlElement& parent, utString const& name, Fill const& fill)
{
    return mr_guard(static_cast<xmlElement*>(nullptr), [&] {
        xmlElement& collection = parent.owner_document().create_element(name);
        fill(collection);
        parent.append_child(collection);
        return &collection;
    });
}
