// The input of a reader.
#pragma once

#include "mrExport.h"
#include "utString.h"

#include <cstdio>
#include <string_view>
#include <variant>

struct mrFault;

/// A file by its path, an open file by its descriptor, or bytes in memory. Descriptor and bytes are borrowed. A
/// source can be read any number of times. Making one of a path, and copying, may throw std::bad_alloc.
class MR_API mrSource
{
public:
    /// A regular file. It is opened once, without waiting, and read no further than the size it had then: a folder,
    /// pipe or device cannot be opened, a file without a size is empty.
    static mrSource from_path(utString const& path) { return mrSource(path); }

    /// A regular file that is open for reading. It is read from its beginning, stays open and keeps its position.
    static mrSource from_descriptor(int descriptor) { return mrSource(descriptor); }

    /// @param bytes  stay in place while they are read
    static mrSource from_memory(std::string_view bytes) { return mrSource(bytes); }

    /// Opens the source for reading at its beginning.
    /// @param fault  receives the reason for a failure
    /// @return for the caller to close, or null
    std::FILE* open(mrFault& fault) const;

private:
    using Place = std::variant<utString, int, std::string_view>;

    explicit mrSource(Place const& place) : m_place(place) {}

    Place m_place;
};
