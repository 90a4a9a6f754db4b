// Reading an image cache file. The library's cache gives no entries out; this reads the text part itself, with
// the outcome that the library's reader has.
#pragma once

#include "readOutcome.h"

#include <string>
#include <string_view>
#include <vector>

namespace mrtool {

/// An entry as the library takes it from a file: hash value, image name and size from an image, the age from
/// the line of the same rank.
struct CacheEntry
{
    int hash = 0;
    int age = 0;
    std::string image_name; ///< empty when it has none
    int width = 0;
    int height = 0;
};

struct CacheContents
{
    int max_cache_size = 0;
    int shrinkage = 0;
    std::vector<CacheEntry> entries;
};

/// Whether a file with this beginning is an image cache file: its first line is two integers with a space
/// between.
bool is_cache(std::string_view beginning);

/// Reads the file. What the library's reader refuses is a fault, what it reports or passes over a warning.
/// Entries are not evicted where there are more than the size limit; that is a warning.
/// @param contents  new ones, to be filled; what was read before a fault stays
ReadOutcome read_cache_file(std::string const& path, CacheContents& contents);

/// The date and time of an age, in this machine's local time: "2026-10-12 09:20:00".
std::string local_time(int age);

} // namespace mrtool
