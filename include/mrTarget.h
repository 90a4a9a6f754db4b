// The output of a writer.
#pragma once

#include "mrExport.h"
#include "utString.h"

#include <string>

/// A file by its path, or bytes in memory, which are borrowed. A writer treats both alike: it replaces their contents
/// or appends to them.
class MR_API mrTarget
{
public:
    static mrTarget to_path(utString const& path) { return mrTarget(path, nullptr); }
    static mrTarget to_memory(std::string& bytes) { return mrTarget({}, &bytes); }

    /// Null for a path.
    std::string* bytes() const { return m_bytes; }
    utString const& path() const { return m_path; }

private:
    mrTarget(utString const& path, std::string* bytes) : m_path(path), m_bytes(bytes) {}

    utString m_path;
    std::string* m_bytes;
};
