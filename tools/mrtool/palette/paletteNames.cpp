#include "paletteNames.h"

#include "messages.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>

namespace mrtool {

namespace {

using namespace std::string_view_literals;

std::string_view trimmed(std::string_view name)
{
    std::size_t const first = name.find_first_not_of(' ');
    if (first == name.npos)
        return {};
    return name.substr(first, name.find_last_not_of(' ') + 1 - first);
}

} // namespace

std::string PaletteNames::take(std::string_view name, std::size_t most)
{
    Reasons reasons{};
    std::string made(name);
    reasons[comment_sign] = std::erase(made, '#') > 0;
    for (char& letter : made)
        if ("\n\r\0"sv.find(letter) != std::string_view::npos) {
            letter = ' ';
            reasons[line_end] = true;
        }
    std::size_t const with_blanks = made.size();
    made = trimmed(made);
    reasons[blank_end] = made.size() < with_blanks;
    if (made.size() > most) {
        made = trimmed(utUTF8::cut(made, most));
        reasons[too_long] = true;
    }
    if (!made.empty() && !m_taken.insert(made).second) {
        made = numbered(made, most);
        reasons[taken_already] = true;
    }
    for (std::size_t reason = 0; reason < reason_count; ++reason)
        if (reasons[reason])
            m_changed[reason].add(
                ut_concat(shown(name), " becomes ", made.empty() ? "no name" : shown(made)));
    return made;
}

/// The name with the first number that makes it new. No number is tried twice behind the same text, so that very
/// many equal names, or such as are equal once cut, take no longer than others.
std::string PaletteNames::numbered(std::string_view name, std::size_t most)
{
    std::size_t lowest = 1;
    for (std::size_t digits = 1;; ++digits, lowest *= 10) {
        std::string front = ut_concat(utUTF8::cut(name, most - digits - " ()"sv.size()), " (");
        std::size_t& next = m_next.try_emplace(front, 2).first->second;
        for (next = std::max(next, lowest); next < 10 * lowest;)
            if (auto const [place, added] = m_taken.insert(ut_concat(front, next++, ")")); added)
                return *place;
    }
}

std::vector<std::string> PaletteNames::notes() const
{
    constexpr char const* words[reason_count] = {
        "without the \"#\" that would begin a comment: ",
        "with a blank for a line end or NUL: ",
        "without blanks at an end: ",
        "cut, since a line has at most 1,023 characters: ",
        "numbered, since an earlier colour has the name: ",
    };
    std::vector<std::string> made;
    for (std::size_t reason = 0; reason < reason_count; ++reason)
        if (!m_changed[reason].empty())
            made.push_back(words[reason] + m_changed[reason].of("name"));
    return made;
}

} // namespace mrtool
