#include "utUTF8.h"

std::string_view utUTF8::without_byte_order_mark(std::string_view text)
{
    return text.starts_with(byte_order_mark) ? text.substr(byte_order_mark.size()) : text;
}

std::size_t utUTF8::decode(std::string_view text, char32_t& code)
{
    if (text.empty())
        return 0;
    unsigned const lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        code = lead;
        return 1;
    }
    std::size_t const length = lead >= 0xf0 ? 4 : lead >= 0xe0 ? 3 : 2;
    if (lead < 0xc0 || lead > 0xf7 || text.size() < length)
        return 0;
    char32_t value = lead & (0x7fu >> length);
    for (char const next : text.substr(1, length - 1)) {
        if (!continues_character(next))
            return 0;
        value = value << 6 | (static_cast<unsigned char>(next) & 0x3fu);
    }
    constexpr char32_t least[] = {0, 0, 0x80, 0x800, 0x10000};
    bool const surrogate = value >= 0xd800 && value <= 0xdfff;
    if (value < least[length] || surrogate || value > 0x10ffff)
        return 0;
    code = value;
    return length;
}

void utUTF8::append(std::string& text, char32_t code)
{
    if (code < 0x80) {
        text += static_cast<char>(code);
        return;
    }
    int followers = code < 0x800 ? 1 : code < 0x10000 ? 2 : 3;
    // As many bits at the top as there are bytes, then the highest bits of the code.
    text += static_cast<char>((0xff00u >> (followers + 1) & 0xffu) | code >> 6 * followers);
    while (followers-- > 0)
        text += static_cast<char>(0x80 | (code >> 6 * followers & 0x3f));
}

bool utUTF8::is_valid(std::string_view text)
{
    char32_t ignored = 0;
    while (!text.empty()) {
        std::size_t const length = decode(text, ignored);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

std::string utUTF8::from_any(std::string_view text)
{
    if (is_valid(text))
        return std::string(text);
    std::string result;
    for (char const byte : text)
        append(result, static_cast<unsigned char>(byte));
    return result;
}

bool utUTF8::continues_character(char byte)
{
    return (static_cast<unsigned char>(byte) & 0xc0) == 0x80;
}

std::string_view utUTF8::cut(std::string_view text, std::size_t most)
{
    if (text.size() <= most)
        return text;
    std::size_t end = most;
    // A character has at most three bytes after its first; more of that kind in a row are no UTF-8.
    while (end > 0 && most - end < 3 && continues_character(text[end]))
        --end;
    return text.substr(0, continues_character(text[end]) ? most : end);
}
