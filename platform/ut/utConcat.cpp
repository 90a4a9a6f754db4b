#include "utConcat.h"

#include "utUTF8.h"

#include <exception>

void ut_say(utString& text, std::string_view words) noexcept
{
    try {
        text = utString(words);
    } catch (std::exception const&) {
        text = "no memory"; // short enough to need none
    }
}

std::string ut_quote(std::string_view text)
{
    std::string quoted = "\"";
    for (char const letter : text) {
        if (letter == '"' || letter == '\\')
            quoted += '\\';
        quoted += letter;
    }
    return quoted + '"';
}

std::string ut_quote_short(std::string_view text)
{
    constexpr std::size_t most = 60;
    constexpr std::size_t end_length = 16;
    if (text.size() <= most)
        return ut_quote(text);
    std::string_view end = text.substr(text.size() - end_length);
    while (end.size() > end_length - 3 && utUTF8::continues_character(end.front()))
        end.remove_prefix(1);
    return ut_quote(utUTF8::cut(text, most - end_length)) + "..." + ut_quote(end);
}
