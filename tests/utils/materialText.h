// Materials to and from the text of their elements.
#pragma once

#include "mrContainers.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrTest.h"

#include "xmlParser.h"
#include "xmlWriter.h"

#include <initializer_list>
#include <sstream>
#include <string>

/// What the object appends to an element, as text.
template <class Object>
std::string written(Object const& object)
{
    xmlDocument document;
    xmlElement& parent = document.create_element("parent");
    document.append_child(parent);
    object.xml_write(parent);
    std::ostringstream out;
    xmlWriter(&document).write(out);
    std::string const text = out.str();
    std::size_t const start = text.find('\n') + 1;
    return text.substr(start, text.rfind("</parent>") - start);
}

/// Of a text that must parse.
template <class Object>
int read(std::string const& text, Object& object)
{
    xmlDocument document;
    EXPECT_EQ(xmlParser().parse(utString(text), document), 1) << text;
    return object.xml_read(*document.document_element());
}

/// The text with one thing changed; throws where it is not in it, which fails a test.
inline std::string with(std::string text, std::string const& thing, std::string const& other)
{
    return text.replace(text.find(thing), thing.size(), other);
}

inline mrMatProp string_prop(utString const& name, utString const& value)
{
    return mrMatProp(mrMatPropTypeStringTag, name, value, 0);
}

inline mrMatPropcoSet properties(std::initializer_list<mrMatProp> members)
{
    mrMatPropcoSet set(mrInitialSize, mrFillLimit);
    for (mrMatProp const& member : members)
        set.add(member);
    return set;
}

/// Layers that are not recoloured.
inline mrFMTexturecoDList layers(std::initializer_list<utString> image_names)
{
    mrFMTexturecoDList list;
    for (utString const& name : image_names)
        list.append(mrFMTexture(name, mrTexLayerColour, 0, giColour()));
    return list;
}

inline mrFMPlainMat* red(utString const& name = "matt red")
{
    return new mrFMPlainMat(name, properties({string_prop("maker", "me")}), -7, giColour(200, 30, 30, 0), 0.5,
                            0.25, 0.125, 1.0, 1.5, "shade it");
}
