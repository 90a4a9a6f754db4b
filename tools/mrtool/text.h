// Texts put together of words and numbers.
#pragma once

#include "utString.h"

#include <charconv>
#include <concepts>
#include <string>
#include <string_view>

namespace mrtool {

inline void append_text(std::string& made, std::string_view part)
{
    made += part;
}

inline void append_text(std::string& made, char const* part)
{
    made += part;
}

inline void append_text(std::string& made, utString const& part)
{
    made += part.view();
}

/// The shortest decimal text of the number, the same in every locale; "nan", "inf" and "-inf" for what is
/// none.
template <class Number>
requires std::integral<Number> || std::floating_point<Number>
void append_text(std::string& made, Number number)
{
    char digits[32];
    made.append(digits, std::to_chars(digits, digits + sizeof digits, number).ptr);
}

inline constexpr std::string_view byte_order_mark = "\xef\xbb\xbf";

inline std::string_view without_byte_order_mark(std::string_view text)
{
    return text.starts_with(byte_order_mark) ? text.substr(byte_order_mark.size()) : text;
}

/// The parts, one after the other.
template <class... Parts>
std::string text(Parts const&... parts)
{
    std::string made;
    (append_text(made, parts), ...);
    return made;
}

} // namespace mrtool
