// Hints at a file's format: its name and its first bytes. Used inside the project; not installed.
#pragma once

#include "gxImageFileUtils.h"
#include "gxOpenFile.h"

#include <cstddef>
#include <string>

/// The extension of the path's last component without the point, in lower case; empty without one.
inline std::string gx_extension(std::string const& path)
{
    char const* const found = gxImageFileUtils::get_extension(path.c_str(), '.');
    std::string extension = found ? found : "";
    for (char& letter : extension)
        if (letter >= 'A' && letter <= 'Z')
            letter = static_cast<char>(letter - 'A' + 'a');
    return extension;
}

/// The first 4 KiB of an open file, whose position moves.
inline std::string gx_read_beginning(std::FILE* file)
{
    std::string bytes(4096, '\0');
    bytes.resize(std::fread(bytes.data(), 1, bytes.size(), file));
    return bytes;
}

/// The same of a regular file; empty when it cannot be read.
inline std::string gx_read_beginning(std::string const& path)
{
    utString ignored;
    gxFile const file = gx_open_file(utString(path), ignored);
    return file ? gx_read_beginning(file.get()) : std::string();
}
