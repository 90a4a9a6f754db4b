// The characters of all scripts, whatever the user's locale.
#pragma once

#include <locale.h>

namespace sc {

/// For functions such as towlower_l(); null where the system has none.
locale_t get_character_locale();

} // namespace sc
