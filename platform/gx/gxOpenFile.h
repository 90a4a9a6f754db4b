// Opening files, and reading and writing them as streams. Used inside the libraries.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <cstdio>
#include <iostream>
#include <memory>
#include <streambuf>
#include <string_view>

struct gxCloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using gxFile = std::unique_ptr<std::FILE, gxCloseFile>;

/// Whether a path has a NUL in it. The system would take it for a shorter one, so no file has such a path.
UT_API bool gx_has_nul(utString const& path);

// Each of these three gives a file for reading at its beginning, or null with the reason in words: "a folder, not
// a file", "not a file", "No such file or directory".

/// Opens a regular file, once and without waiting: folders, pipes and devices are refused, and so is a path with a
/// NUL.
UT_API gxFile gx_open_file(utString const& path, utString& reason);

/// Opens the regular file of a descriptor, which stays open. The two share one position.
UT_API gxFile gx_open_descriptor(int descriptor, utString& reason);

/// @param bytes  borrowed for as long as the file is open
UT_API gxFile gx_open_memory(std::string_view bytes, utString& reason);

/// Opens a file for writing at its end; a missing one is made.
/// @return null where it cannot be opened, or the path holds a NUL, with the reason in errno
UT_API gxFile gx_append_to_file(utString const& path);

/// An open file as a stream, for what reads lines or writes text. The position of the file is of use again after
/// a flush, or a seek to what tellg() said.
class UT_API gxFileStream : public std::iostream
{
public:
    /// @param file  borrowed; null makes a stream that has failed
    explicit gxFileStream(std::FILE* file);
    ~gxFileStream() override;

private:
    std::unique_ptr<std::streambuf> m_buffer;
};
