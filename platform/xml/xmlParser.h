// XML from text.
#pragma once

#include "utExport.h"
#include "utString.h"
#include "xmlDocument.h"

#include <cstddef>

/// Reads a document into its nodes. Safe for untrusted input.
///
/// Text is kept as it is, white space included, but for line breaks: a carriage return that stands there
/// itself, with a line feed after it or without, becomes one line feed; one from a character reference stays.
/// Comments and processing instructions are dropped, CDATA is text, and the text around them is one node.
/// Attributes are dropped. There are no entities beyond the five of XML and character references, and a
/// document type declaration is refused.
///
/// The text is taken as UTF-8 whatever a declaration says. Text that is refused as UTF-8 is parsed again as
/// one byte a character and handed back as those same bytes; a character reference above 255 in it comes
/// back as UTF-8.
class UT_API xmlParser
{
public:
    /// Elements within elements; a deeper document is refused.
    static constexpr int max_depth = 256;
    /// Bytes of text; a longer document is refused. Parsing takes at most about 30 times as much memory as
    /// the text, which one of nothing but empty elements with a character between them does.
    static constexpr std::size_t max_length = std::size_t{1} << 28;
    /// Different names of elements; a document of more is refused.
    static constexpr std::size_t max_names = 4096;

    /// Fills the document; what it held is gone.
    /// @return 1, or 0 with the document left empty; error() then says what is wrong, "not enough memory"
    ///         when that is why
    int parse(utString const& text, xmlDocument& document);

    /// Why a parse failed, and where.
    struct Error
    {
        utString reason; ///< "mismatched tag" for example; invalid when nothing failed
        int line = 0;    ///< from 1; 0 when it is about no place
        int column = 0;  ///< in bytes from 1
    };

    /// That of the last parse.
    Error const& error() const { return m_error; }

private:
    Error m_error;
};
