#include "foreignPalette.h"
#include "outputFile.h"
#include "tally.h"

#include "mrColourPalette.h"
#include "mrUtils.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <array>
#include <map>
#include <set>
#include <sstream>

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

/// Changes names so that a palette file returns them unchanged and no two are the same, and remembers what it
/// changed. Names that a palette file can hold stay as they are, unless an earlier one is the same.
class PaletteNames
{
public:
    /// Removes "#" and blanks at both ends, turns a line end or NUL into a blank, cuts a name that is too long
    /// between characters, and appends " (2)", " (3)" and so on to one that was claimed before.
    /// @param most  bytes that there is room for, at least 100
    /// @return empty when nothing is left of it
    std::string claim(std::string_view name, std::size_t most);

    /// A line for each kind of change.
    std::vector<std::string> list_changes() const;

private:
    enum Change
    {
        comment_sign,
        line_end,
        blank_end,
        too_long,
        already_claimed,
        change_count
    };

    std::string number_name(std::string_view name, std::size_t most);

    std::set<std::string> m_claimed;
    /// From the text before a number to the next number to try.
    std::map<std::string, std::size_t> m_next;
    std::array<Tally, change_count> m_changes;
};

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

constexpr std::size_t longest_line = 1023;

/// The bytes that the colour's line leaves for the name.
std::size_t count_room(giColour const& colour)
{
    return longest_line -
           ut_concat("rgb8 ", colour.red(), " ", colour.green(), " ", colour.blue(), " ").size();
}

/// @return which names were changed
std::vector<std::string> fill(mrColourPalette& palette, std::vector<ForeignColour> const& colours)
{
    PaletteNames names;
    for (ForeignColour const& each : colours) {
        std::string name = names.claim(each.name, count_room(each.colour));
        palette.append(each.colour, name.empty() ? utString() : utString(std::move(name)),
                       mrColourEncodingRgb8);
    }
    return names.list_changes();
}

std::string print(mrColourPalette const& palette)
{
    std::ostringstream lines;
    mrUtils::write_pcp(palette, lines);
    return std::move(lines).str();
}

} // namespace

Result<std::vector<std::string>> write_palette(std::vector<ForeignColour> colours, std::string const& path)
{
    mrColourPalette palette;
    std::vector<std::string> changes = fill(palette, colours);
    colours = {};
    // At once, since the library flushes after every line, which costs a system call each on a file.
    std::string const text = print(palette);
    mrColourPalette read_back;
    std::istringstream in(text);
    if (mrUtils::read_pcp(in, read_back) != mrPaletteFileOK || print(read_back) != text)
        return fail(path + " would not read back as it is written");
    return write_bytes(path, text).map([&] { return std::move(changes); });
}

} // namespace mrtool
