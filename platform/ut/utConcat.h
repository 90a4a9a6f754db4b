// Texts put together of words and numbers.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

inline void ut_append(std::string& text, std::string_view part)
{
    text += part;
}

inline void ut_append(std::string& text, char const* part)
{
    text += part;
}

inline void ut_append(std::string& text, utString const& part)
{
    text += part.view();
}

/// Appends the shortest decimal text that reads back as the same number, in every locale alike; "nan", "inf" or
/// "-inf" where it is not finite.
template <class Number>
requires std::integral<Number> || std::floating_point<Number>
void ut_append(std::string& text, Number number)
{
    char digits[32];
    text.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

/// The parts, one after the other.
template <class... Parts>
std::string ut_concat(Parts const&... parts)
{
    std::string text;
    (ut_append(text, parts), ...);
    return text;
}

/// Makes the text these words, or, where there is no memory for them, "no memory".
UT_API void ut_say(utString& text, std::string_view words) noexcept;

/// The text in quotes, with a backslash before each quote and backslash in it.
UT_API std::string ut_quote(std::string_view text);

/// The same; of a text of more than 60 bytes the beginning and the end.
UT_API std::string ut_quote_short(std::string_view text);
