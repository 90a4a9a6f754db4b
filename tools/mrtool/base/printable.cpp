#include "printable.h"

#include "utUTF8.h"

#include <algorithm>
#include <cstdio>

namespace mrtool {

namespace {

struct CodePoints
{
    char32_t first;
    char32_t last;
};

// Characters that a terminal obeys, and characters that are invisible or change the direction of the text around
// them, so that one name looks like another.
constexpr CodePoints unseen[] = {
    {0x00, 0x1f},     {0x7f, 0x9f},     {0xad, 0xad},      // controls, soft hyphen
    {0x061c, 0x061c}, {0x115f, 0x1160}, {0x17b4, 0x17b5},  // Arabic letter mark, fillers, inherent vowels
    {0x180b, 0x180f}, {0x200b, 0x200f}, {0x2028, 0x202e},  // zero width, directions, line separators
    {0x2060, 0x206f}, {0x3164, 0x3164}, {0xfeff, 0xfeff},  // joiners, directions, fillers, byte order mark
    {0xffa0, 0xffa0}, {0xfff9, 0xfffb}, {0xe0000, 0xe007f} // annotations, tags
};

bool is_unseen(char32_t code)
{
    return std::any_of(std::begin(unseen), std::end(unseen),
                       [=](CodePoints const& each) { return code >= each.first && code <= each.last; });
}

std::string escape(char32_t code)
{
    char text[16];
    std::snprintf(text, sizeof text, code < 0x100 ? "\\x%02x" : "\\u{%x}", static_cast<unsigned>(code));
    return text;
}

} // namespace

std::string make_printable(std::string_view text)
{
    std::string const whole = utUTF8::from_any(text);
    std::string made;
    for (std::string_view left = whole; !left.empty();) {
        char32_t code = 0;
        std::string_view const character = left.substr(0, utUTF8::decode(left, code));
        left.remove_prefix(character.size());
        made += is_unseen(code) ? escape(code) : std::string(character);
    }
    return made;
}

} // namespace mrtool
