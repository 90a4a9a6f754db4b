// What is in an image cache file.
#pragma once

#include "fileInfo.h"

class mrSource;

namespace mrtool {

/// Reads an image cache file. What the library's reader reports or passes over is a warning; entries are not evicted
/// where there are more than the size limit, which is a warning too.
void read_cache_info(mrSource const& source, FileInfo& info, CacheContents& contents);

} // namespace mrtool
