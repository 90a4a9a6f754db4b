// Image cache files: the library and what lists such a file for mrtool see the same in it.
#include "fuzz.h"

#include "cacheFile.h"

#include "mrImageCache.h"
#include "utString.h"

#include <algorithm>

void try_input(std::string const& bytes)
{
    MemoryFile const input(with_checksums(bytes));
    mrtool::CacheContents contents;
    mrtool::ReadOutcome const outcome = mrtool::read_cache_file(input.path(), contents);

    mrImageCache cache;
    long const before = report_count();
    mrFileMatReadStatus const status = cache.read(utString(input.path()));
    require(status == outcome.status, "both read the file, or both do not");
    if (!outcome.read())
        return;
    require(!outcome.warnings.empty() || report_count() == before,
            "there is a warning where there is a report");
    bool const evicts = static_cast<int>(contents.entries.size()) > contents.max_cache_size;
    if (evicts)
        return;
    require(cache.size() == static_cast<int>(contents.entries.size()), "both find as many entries");
    for (mrtool::CacheEntry const& entry : contents.entries)
        require(cache.hash_value_exists(static_cast<unsigned int>(entry.hash)), "both find the same entries");
}
