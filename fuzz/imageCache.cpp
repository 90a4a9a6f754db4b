// Image cache files: the library and what lists such a file for mrtool see the same in it.
#include "fuzz.h"

#include "cacheFile.h"

#include "mrImageCache.h"

#include "dgDuctImage.h"
#include "utString.h"

#include <algorithm>
#include <string>

namespace {

bool may_evict(mrtool::ReadOutcome const& outcome)
{
    return std::any_of(outcome.warnings.begin(), outcome.warnings.end(), [](std::string const& warning) {
        return warning.find("evict some") != std::string::npos || warning.starts_with("and ");
    });
}

} // namespace

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
    if (may_evict(outcome))
        return;
    require(cache.size() == static_cast<int>(contents.entries.size()), "both find as many entries");
    require(cache.max_cache_size() == contents.max_cache_size && cache.shrinkage() == contents.shrinkage,
            "both find the same limits");
    for (mrtool::CacheEntry const& entry : contents.entries) {
        dgDuctImage const* const image = cache.get_image(static_cast<unsigned int>(entry.hash));
        require(image && image->width() == entry.width && image->height() == entry.height &&
                    image->name() == entry.image_name,
                "both find the same entries");
    }
}
