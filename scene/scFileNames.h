// File names out of names that come from elsewhere.
#pragma once

#include "scExport.h"

#include <cstddef>
#include <map>
#include <string>
#include <string_view>

/// Hands out file names of which no two are the same, for the materials of a scene for example. May throw
/// std::bad_alloc.
class SC_API scFileNames
{
public:
    /// Bytes of the longest safe name.
    static constexpr std::size_t max_size = 100;

    /// Makes a name that every file system takes and no path can hide in. Keeps letters of any script with
    /// their accents, digits, "-", "_", and "." behind the first character; every other character becomes
    /// "_". A text that is not UTF-8 is read as ISO 8859-1. Safe for untrusted input.
    /// @return never empty, cut between characters
    static std::string make_safe(std::string_view name);

    /// @return the name made safe, or the first of NAME-2, NAME-3, ... that was not handed out yet
    std::string make_unique(std::string_view name);

private:
    /// From each name that was handed out to the number that was last tried behind it.
    std::map<std::string, std::size_t> m_given;
};
