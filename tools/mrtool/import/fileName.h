// File names out of names that come from elsewhere.
#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

namespace mrtool {

/// The name as one that every file system takes and no path can hide in: letters, digits, "-", "_", "." not
/// in front, and letters beyond ASCII stay, each with the accents and other marks that follow it; every other
/// character becomes "_". It is cut at 100 bytes, and never empty.
std::string safe_file_name(std::string_view name);

/// Hands out names of which no two are the same.
class UniqueNames
{
public:
    /// @return the name, or the first of NAME-2, NAME-3, ... that was not handed out yet
    std::string take(std::string const& name);

private:
    /// From each name that was handed out to the number that was last tried behind it.
    std::map<std::string, std::size_t> m_taken;
};

} // namespace mrtool
