#include "scFileNames.h"

#include "characterLocale.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <cwctype>

namespace {

/// Whether the character is of a class, whatever the user's locale.
/// @param name  "alpha" for a letter in any script, "combining" for an accent or the like on the letter before
bool is_in_class(char const* name, wint_t character)
{
    locale_t const characters = sc::get_character_locale();
    return characters && iswctype_l(character, wctype_l(name, characters), characters) != 0;
}

/// Whether a character of ASCII stays.
bool stays(wint_t character, bool in_front)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z') ||
           (character >= '0' && character <= '9') || character == '-' || character == '_' ||
           (character == '.' && !in_front);
}

} // namespace

std::string scFileNames::make_safe(std::string_view name)
{
    std::string const whole = utUTF8::from_any(name);
    std::string safe;
    bool after_letter = false;
    for (std::string_view left = whole; !left.empty();) {
        char32_t decoded = 0;
        std::string_view character = left.substr(0, utUTF8::decode(left, decoded));
        left.remove_prefix(character.size());
        auto const code = static_cast<wint_t>(decoded);
        after_letter = is_in_class("alpha", code) || (after_letter && is_in_class("combining", code));
        if (!after_letter && !stays(code, safe.empty()))
            character = "_";
        if (safe.size() + character.size() > max_size)
            break;
        safe += character;
    }
    return safe.empty() ? "_" : safe;
}

std::string scFileNames::make_unique(std::string_view name)
{
    std::string const safe = make_safe(name);
    auto const [known, first] = m_given.emplace(safe, 1);
    if (first)
        return safe;
    for (;;) {
        // Goes on where it stopped: a scene may have tens of thousands of materials of one name.
        std::string unique = ut_concat(safe, "-", ++known->second);
        if (m_given.emplace(unique, 1).second)
            return unique;
    }
}
