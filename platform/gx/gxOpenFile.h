// Opening a file that somebody else put there. Used inside the library.
#pragma once

#include "utString.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <memory>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

struct gxCloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using gxFile = std::unique_ptr<std::FILE, gxCloseFile>;

/// Whether the text names a file: a NUL would end it for the system, which would take another file.
inline bool gx_is_path(utString const& text)
{
    return text.view().find('\0') == std::string_view::npos;
}

/// Opens a regular file for reading. A pipe of that name, which would keep the caller waiting for a writer, is
/// refused without waiting, and so are folders and devices.
/// @param reason  receives in words why there is none: "it is no file", or "the file cannot be opened: ..."
/// @return the file at its beginning, or null
inline gxFile gx_open_file(utString const& path, utString& reason)
{
    errno = EINVAL;
    int const descriptor =
        gx_is_path(path) ? ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC) : -1;
    struct stat status
    {};
    bool const opened = descriptor >= 0 && ::fstat(descriptor, &status) == 0;
    bool const regular = opened && S_ISREG(status.st_mode);
    gxFile file(regular ? ::fdopen(descriptor, "rb") : nullptr);
    if (file)
        return file;
    std::string const why = opened && !regular
                                ? "it is no file"
                                : "the file cannot be opened: " + std::generic_category().message(errno);
    if (descriptor >= 0)
        ::close(descriptor);
    reason = utString(why);
    return nullptr;
}

/// Opens such a file as a stream, for what reads lines.
/// It is opened once more for that: who can put another file in its place meanwhile has that one opened.
/// @return not open where gx_open_file() gives none
inline std::ifstream gx_open_stream(utString const& path)
{
    utString reason;
    return gx_open_file(path, reason) ? std::ifstream(path.c_str(), std::ios::binary) : std::ifstream();
}

/// Opens a file for writing from its beginning, emptied, as a stream.
/// @return not open where it cannot be
inline std::ofstream gx_create_stream(utString const& path)
{
    return gx_is_path(path) ? std::ofstream(path.c_str(), std::ios::binary | std::ios::trunc)
                            : std::ofstream();
}

/// Opens a file for writing behind what is in it.
/// @return null where it cannot be opened
inline gxFile gx_append_to_file(utString const& path)
{
    return gxFile(gx_is_path(path) ? std::fopen(path.c_str(), "ab") : nullptr);
}
