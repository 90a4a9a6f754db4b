#include "characterLocale.h"

namespace sc {

locale_t get_character_locale()
{
    static locale_t const locale = newlocale(LC_CTYPE_MASK, "C.UTF-8", nullptr);
    return locale;
}

} // namespace sc
