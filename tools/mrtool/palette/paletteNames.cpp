#include "paletteNames.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>

namespace mrtool {

namespace {

using namespace std::string_view_literals;

std::string_view trim(std::string_view name)
{
    std::size_t const first = name.find_first_not_of(' ');
    if (first == name.npos)
        return {};
    return name.substr(first, name.find_last_not_of(' ') + 1 - first);
}

} // namespace

std::string PaletteNames::claim(std::string_view name, std::size_t most)
{
    std::array<bool, change_count> changes{};
    std::string made(name);
    changes[comment_sign] = std::erase(made, '#') > 0;
    for (char& letter : made)
        if ("\n\r\0"sv.find(letter) != std::string_view::npos) {
            letter = ' ';
            changes[line_end] = true;
        }
    std::size_t const with_blanks = made.size();
    made = trim(made);
    changes[blank_end] = made.size() < with_blanks;
    if (made.size() > most) {
        made = trim(utUTF8::cut(made, most));
        changes[too_long] = true;
    }
    if (!made.empty() && !m_claimed.insert(made).second) {
        made = number_name(made, most);
        changes[already_claimed] = true;
    }
    for (std::size_t change = 0; change < change_count; ++change)
        if (changes[change])
            m_changes[change].add(ut_concat(ut_quote_short(name), " becomes ",
                                            made.empty() ? "no name" : ut_quote_short(made)));
    return made;
}

/// Appends the lowest number that makes the name new. No number is tried twice behind the same text, so that very
/// many equal names, or names that are equal once cut, take no longer than others.
std::string PaletteNames::number_name(std::string_view name, std::size_t most)
{
    std::size_t lowest = 1;
    for (std::size_t digits = 1;; ++digits, lowest *= 10) {
        std::string front = ut_concat(utUTF8::cut(name, most - digits - " ()"sv.size()), " (");
        std::size_t& next = m_next.try_emplace(front, 2).first->second;
        for (next = std::max(next, lowest); next < 10 * lowest;)
            if (auto const [place, added] = m_claimed.insert(ut_concat(front, next++, ")")); added)
                return *place;
    }
}

std::vector<std::string> PaletteNames::list_changes() const
{
    constexpr char const* words[change_count] = {
        "without the \"#\" that would begin a comment: ",
        "with a blank for a line end or NUL: ",
        "without blanks at an end: ",
        "cut, since a line has at most 1,023 characters: ",
        "numbered, since an earlier colour has the name: ",
    };
    std::vector<std::string> lines;
    for (std::size_t change = 0; change < change_count; ++change)
        m_changes[change].append_to(lines, words[change], "name");
    return lines;
}

} // namespace mrtool
