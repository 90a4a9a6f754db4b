// XML to text.
#pragma once

#include "utExport.h"
#include "xmlDocument.h"

#include <ostream>

/// Writes a document so that parsing it gives the same elements and texts back.
///
/// Two spaces of indent, at most max_indent, one element a line, a leaf and its text on one line; an element
/// that mixes texts and elements is written without any layout inside, so that only white space between
/// elements is ever added. Every byte string comes back as it was, line breaks, carriage returns and 8-bit
/// bytes included, except the characters that XML cannot carry (see xmlUtils::carried).
///
/// No line is longer than max_line bytes: a longer text is broken between characters by an empty comment with
/// a line break in it, which the parser drops again. Element names are never broken; they must be shorter
/// than 500 bytes for this to hold.
class UT_API xmlWriter
{
public:
    /// Bytes in a line, without its line break.
    static constexpr std::size_t max_line = 1022;
    /// Spaces in front of an element; a deeper element stands no further in.
    static constexpr std::size_t max_indent = 512;

    /// @param document  stays the caller's
    explicit xmlWriter(xmlDocument const* document) : m_document(document) {}

    /// Writes the root element and what is in it; the line break after its closing tag is the last character.
    /// @return 1, or 0 for a document without a root and when the stream failed
    int write(std::ostream& out) const;

private:
    xmlDocument const* m_document;
};
