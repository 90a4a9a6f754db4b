// Where a writer writes to.
#pragma once

#include "mrExport.h"
#include "utString.h"

#include <string>

/// A file by its path, or bytes in memory, which are borrowed. What a writer does to a file it does to bytes: it
/// puts its own in their place, or appends to them.
class MR_API mrTarget
{
public:
    static mrTarget to_path(utString const& path);

    static mrTarget to_memory(std::string& bytes);

    /// Null for a path.
    std::string* bytes() const { return m_bytes; }
    utString const& path() const { return m_path; }

private:
    mrTarget() = default;

    utString m_path;
    std::string* m_bytes = nullptr;
};
