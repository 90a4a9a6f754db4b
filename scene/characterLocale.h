// The characters of all scripts, whatever the user's locale.
#pragma once

#include <clocale>
#include <locale.h>

namespace sc {

/// For functions such as towlower_l(); null where the system has none.
inline locale_t get_character_locale()
{
    static locale_t const locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

} // namespace sc
