// A target that is open for writing. Used inside the library.
#pragma once

#include "gxOpenFile.h"

#include <cstddef>
#include <cstdio>
#include <string>

struct mrFault;
class mrTarget;

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
    std::FILE* file() const { return m_file.get(); }

    /// Ends the writing; some failures show only now.
    /// @param fault  receives the reason for a failure
    /// @return whether the target took all that was written
    bool close(mrFault& fault);

private:
    std::string* m_bytes;
    char* m_buffer = nullptr; ///< of a file in memory
    std::size_t m_size = 0;   ///< of the buffer
    gxFile m_file;
};
