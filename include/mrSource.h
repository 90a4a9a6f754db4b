// Where a reader reads from.
#pragma once

#include "mrExport.h"
#include "utString.h"

#include <cstdio>
#include <string_view>

struct mrFault;

/// A file by its path, an open file by its descriptor, or bytes in memory. Descriptor and bytes are borrowed. A
/// source may be read from any number of times.
class MR_API mrSource
{
public:
    /// A regular file. It is opened once, without waiting: a folder, pipe or device cannot be opened.
    static mrSource from_path(utString const& path);

    /// A regular file that is open for reading. It is read from its beginning, and stays open; where its position
    /// is afterwards is not settled.
    static mrSource from_descriptor(int descriptor);

    /// @param bytes  stay where they are while they are read
    static mrSource from_memory(std::string_view bytes);

    /// Opens it for reading at its beginning.
    /// @param fault  receives the reason when that fails
    /// @return for the caller to close, or null
    std::FILE* open(mrFault& fault) const;

private:
    enum class Kind
    {
        path,
        descriptor,
        memory
    };

    explicit mrSource(Kind kind) : m_kind(kind) {}

    Kind m_kind;
    int m_descriptor = -1;
    utString m_path;
    std::string_view m_bytes;
};
