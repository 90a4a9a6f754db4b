// A target that is open for writing. Used inside the library.
#pragma once

#include "gxReplacement.h"

#include <cstddef>
#include <cstdio>
#include <optional>
#include <string>

struct mrFault;
class mrTarget;

/// What is written to replace the target takes its place with close(); without that, an older file stays whole, see
/// gxReplacement, and so do older bytes.
class mrOutput
{
public:
    enum class Mode
    {
        replace,
        append
    };

    /// @param target  borrowed
    /// @param fault   receives the reason when the target cannot be opened
    mrOutput(mrTarget const& target, Mode mode, mrFault& fault);
    ~mrOutput();
    mrOutput(mrOutput const&) = delete;
    mrOutput& operator=(mrOutput const&) = delete;

    /// Null when the target could not be opened.
    std::FILE* file() const { return m_replacement ? m_replacement->file() : m_file.get(); }

    /// Whether what was written before a failure stays.
    bool in_place() const { return m_replacement && m_replacement->temporary().empty(); }

    /// Ends the writing; some failures show only now.
    /// @param fault  receives the reason for a failure
    /// @return whether the target took all that was written
    bool close(mrFault& fault);

    /// Tells why writing failed, where the target is to blame.
    /// @param fault  unchanged where it is not
    void explain(mrFault& fault) const;

private:
    int close_memory(int error);

    std::string* m_bytes;
    Mode const m_mode;
    char* m_buffer = nullptr; ///< of a file in memory
    std::size_t m_size = 0;   ///< of the buffer
    gxFile m_file;            ///< in memory, or to append to
    std::optional<gxReplacement> m_replacement;
};
