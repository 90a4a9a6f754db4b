#include "fileName.h"

#include "messages.h"
#include "text.h"

#include <clocale>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <type_traits>

namespace mrtool {

namespace {

constexpr std::size_t longest_name = 100;

struct FreeLocale
{
    void operator()(locale_t locale) const { freelocale(locale); }
};

/// The classes of characters; not a matter of the user's locale.
locale_t characters()
{
    static std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale> const locale(
        newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr));
    return locale.get();
}

/// Whether it is a letter in any script.
bool is_letter(wchar_t character)
{
    return characters() && iswalpha_l(static_cast<wint_t>(character), characters()) != 0;
}

/// Whether it is an accent or the like that changes the letter before it.
bool is_mark(wchar_t character)
{
    if (!characters())
        return false;
    static wctype_t const marks = wctype_l("combining", characters());
    return iswctype_l(static_cast<wint_t>(character), marks, characters()) != 0;
}

/// Takes the first character off a text in UTF-8.
wchar_t take_character(std::string_view& text)
{
    auto const first = static_cast<unsigned char>(text[0]);
    std::size_t const length = first < 0x80 ? 1 : first < 0xe0 ? 2 : first < 0xf0 ? 3 : 4;
    unsigned code = length == 1 ? first : first & (0xffu >> (length + 1));
    for (std::size_t at = 1; at < length; ++at)
        code = code << 6 | (static_cast<unsigned char>(text[at]) & 0x3fu);
    text.remove_prefix(length);
    return static_cast<wchar_t>(code);
}

/// Whether a character that is no letter beyond ASCII stays.
bool stays(wchar_t character, bool in_front)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '_' ||
           (character == '.' && !in_front);
}

} // namespace

std::string safe_file_name(std::string_view name)
{
    std::string const whole = as_utf8(name);
    std::string safe;
    bool after_letter = false;
    for (std::string_view left = whole; !left.empty();) {
        std::string_view character = left;
        wchar_t const code = take_character(left);
        after_letter = is_letter(code) || (after_letter && is_mark(code));
        bool const kept = after_letter || stays(code, safe.empty());
        character.remove_suffix(left.size());
        if (!kept)
            character = "_";
        if (safe.size() + character.size() > longest_name)
            break;
        safe += character;
    }
    return safe.empty() ? "_" : safe;
}

std::string UniqueNames::take(std::string const& name)
{
    auto const [known, first] = m_taken.emplace(name, 1);
    if (first)
        return name;
    for (;;) {
        // Goes on where it stopped: a scene may have tens of thousands of materials of one name.
        std::string unique = text(name, "-", ++known->second);
        if (m_taken.emplace(unique, 1).second)
            return unique;
    }
}

} // namespace mrtool
