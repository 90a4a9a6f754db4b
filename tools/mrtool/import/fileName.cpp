#include "fileName.h"

#include "utConcat.h"
#include "utUTF8.h"

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
        std::string unique = ut_concat(name, "-", ++known->second);
        if (m_taken.emplace(unique, 1).second)
            return unique;
    }
}

} // namespace mrtool
