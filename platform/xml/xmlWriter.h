// XML to text.
#pragma once

#include "utExport.h"
#include "xmlDocument.h"

#include <ostream>

/// Writes a document so that parsing it gives the same nodes back.
///
/// Two spaces of indent, one element a line, a leaf and its text on one line. No line is longer than
/// max_line bytes: a longer text is broken between characters by an empty comment with a line break in it,
/// which the parser drops again. Every byte string comes back as it was, line breaks, carriage returns and
/// 8-bit bytes included, except the characters that XML cannot carry (see xmlUtils::carried).
class UT_API xmlWriter
{
public:
    static constexpr std::size_t max_line = 1022;

    /// @param document  stays the caller's
    explicit xmlWriter(xmlDocument const* document) : m_document(document) {}

    /// Writes the root element and what is in it; the line break after its closing tag is the last character.
    /// @return 1, or 0 when there is no root or the stream failed
    int write(std::ostream& out) const;

private:
    xmlDocument const* m_document;
};
