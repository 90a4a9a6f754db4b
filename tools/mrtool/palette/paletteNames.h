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

/// Turns any names into such as come back from a palette file as they are, no two the same, and remembers what it
/// changed. What a palette file can hold already stays as it is, unless it was there before.
class PaletteNames
{
public:
    /// "#" is left out, a line end or NUL becomes a blank, blanks at the ends go; then what is too long is cut,
    /// not within a character of UTF-8; and a name that was taken already gets " (2)", " (3)" and so on.
    /// @param most  bytes that there is room for, at least 100
    /// @return empty when nothing is left of it
    std::string take(std::string_view name, std::size_t most);

    /// What was changed, a line for each reason.
    std::vector<std::string> notes() const;

private:
    enum Reason
    {
        comment_sign,
        line_end,
        blank_end,
        too_long,
        taken_already,
        reason_count
    };
    using Reasons = std::array<bool, reason_count>;

    std::string numbered(std::string_view name, std::size_t most);

    std::set<std::string> m_taken;
    /// By what stands before a number: the one to try next.
    std::map<std::string, std::size_t> m_next;
    std::array<Tally, reason_count> m_changed;
};

} // namespace mrtool
