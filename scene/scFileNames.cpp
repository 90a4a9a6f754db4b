#include "scFileNames.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <clocale>
#include <cwchar>
#include <cwctype>
#include <memory>
#include <type_traits>

namespace {

struct FreeLocale
{
    void operator()(locale_t locale) const { freelocale(locale); }
};

/// The classes of characters; not a matter of the user's locale.
locale_t get_characters()
{
    static std::unique_ptr<std::remove_pointer_t<locale_t>, FreeLocale> const locale(
        newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr));
    return locale.get();
}

/// Whether it is a letter in any script.
bool is_letter(wchar_t character)
{
    return get_characters() && iswalpha_l(static_cast<wint_t>(character), get_characters()) != 0;
}

/// Whether it is an accent or the like that changes the letter before it.
bool is_mark(wchar_t character)
{
    if (!get_characters())
        return false;
    static wctype_t const marks = wctype_l("combining", get_characters());
    return iswctype_l(static_cast<wint_t>(character), marks, get_characters()) != 0;
}

/// Whether a character that is no letter beyond ASCII stays.
bool stays(wchar_t character, bool in_front)
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
        auto const code = static_cast<wchar_t>(decoded);
        after_letter = is_letter(code) || (after_letter && is_mark(code));
        bool const kept = after_letter || stays(code, safe.empty());
        if (!kept)
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
