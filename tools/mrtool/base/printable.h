// Texts of any origin, made fit to be shown to the user.
#pragma once

#include <string>
#include <string_view>

namespace mrtool {

/// Makes the text UTF-8 that a terminal shows as it is and does not obey. Control characters, invisible
/// characters and those that change the direction of writing become "\x1b", "\u{202e}" and the like.
std::string make_printable(std::string_view text);

} // namespace mrtool
