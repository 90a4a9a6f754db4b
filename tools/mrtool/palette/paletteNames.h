// Names that a palette file can hold.
#pragma once

#include "tally.h"

#include <array>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace mrtool {

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

} // namespace mrtool
