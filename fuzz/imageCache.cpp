// Image cache files: a cache that was read can be written, and reads as the same.
#include "fuzz.h"

#include "mrFault.h"
#include "mrImageCache.h"
#include "mrImageCacheFile.h"
#include "mrSource.h"
#include "mrTarget.h"

#include <string>

void try_input(std::string const& bytes)
{
    std::string const input = with_checksums(bytes);
    mrSource const source = mrSource::from_memory(input);
    mrFault fault;
    mrImageCache cache;
    if (cache.read(source, {}, fault) != mrFileMatReadOK) {
        require(!fault.reason.empty(), "there are words for what is wrong with a file");
        return;
    }
    if (cache.invalid())
        return;
    std::string written;
    require(cache.write(mrTarget::to_memory(written), fault), "a cache that was read can be written");
    mrImageCacheFile file;
    require(file.read(mrSource::from_memory(written), {}, false, fault) == mrFileMatReadOK,
            "a cache that was written reads");
    require(file.limits().first == cache.max_cache_size() && file.limits().second == cache.shrinkage(),
            "the limits are the same");
    require(static_cast<int>(file.lines().size()) == cache.size(), "there are as many entries");
    for (mrCacheLine const& line : file.lines())
        require(cache.hash_value_exists(static_cast<unsigned int>(line.first)),
                "the hash values are the same");
}
