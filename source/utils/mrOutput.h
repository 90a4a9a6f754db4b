// The open end of a target. Used inside the library.
#pragma once

#include "gxOpenFile.h"

#include <cstddef>
#include <cstdio>
#include <string>

struct mrFault;
class mrTarget;

/// A target while it is written to.
class mrOutput
{
public:
    enum class Mode
    {
        replace,
        append
    };

    /// @param target  borrowed
    /// @param fault   receives the reason when it cannot be opened
    mrOutput(mrTarget const& target, Mode mode, mrFault& fault);
    ~mrOutput();
    mrOutput(mrOutput const&) = delete;
    mrOutput& operator=(mrOutput const&) = delete;

    /// Null when it could not be opened.
    std::FILE* file() const { return m_file.get(); }

    /// Ends the writing. What a target does not take may show here only.
    /// @return whether it took everything; @p fault receives the reason when not
    bool close(mrFault& fault);

private:
    std::string* m_bytes;
    char* m_buffer = nullptr; ///< of a file in memory, with the next
    std::size_t m_size = 0;
    gxFile m_file;
};
