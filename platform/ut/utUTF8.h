// Characters of UTF-8 text.
#pragma once

#include "utExport.h"

#include <cstddef>
#include <string>
#include <string_view>

/// UTF-8 as RFC 3629 defines it: no surrogates, no overlong forms, nothing above U+10FFFF.
class UT_API utUTF8
{
public:
    static constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";

    /// The text behind its byte order mark, or all of it.
    static std::string_view without_byte_order_mark(std::string_view text);

    /// Decodes the character at the beginning of the text.
    /// @param code  receives its code point; untouched on failure
    /// @return its length in bytes, 1 to 4, or 0 when the text is empty or begins with something else
    static std::size_t decode(std::string_view text, char32_t& code);

    /// Appends a character.
    /// @param code  at most U+10FFFF
    static void append(std::string& text, char32_t code);

    /// Whether the whole text is UTF-8; the empty text is.
    static bool is_valid(std::string_view text);

    /// The text itself where it is UTF-8; else each byte as one character of ISO 8859-1.
    static std::string from_any(std::string_view text);

    /// Whether the byte is one of a character behind its first.
    static bool continues_character(char byte);

    /// At most @p most bytes from the beginning of the text, without a character cut in two. Bytes that are no
    /// UTF-8 are parted anywhere.
    static std::string_view cut(std::string_view text, std::size_t most);
};
