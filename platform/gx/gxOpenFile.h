// Opening files, and reading and writing them as streams. Used inside the libraries.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <cstdio>
#include <iostream>
#include <memory>
#include <streambuf>
#include <string_view>
#include <unistd.h>
#include <utility>

struct gxCloseFile
{
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using gxFile = std::unique_ptr<std::FILE, gxCloseFile>;

/// Whether a path has a NUL in it. The system would take it for a shorter one, so no file has such a path.
UT_API bool gx_has_nul(utString const& path);

/// An open file, closed at the end.
class gxDescriptor
{
public:
    /// @param descriptor  below 0 for none
    explicit gxDescriptor(int descriptor = -1) : m_descriptor(descriptor) {}
    gxDescriptor(gxDescriptor&& other) noexcept : m_descriptor(other.release()) {}
    gxDescriptor& operator=(gxDescriptor&& other) noexcept
    {
        std::swap(m_descriptor, other.m_descriptor);
        return *this;
    }
    ~gxDescriptor()
    {
        if (m_descriptor >= 0)
            ::close(m_descriptor);
    }

    explicit operator bool() const { return m_descriptor >= 0; }
    int get() const { return m_descriptor; }
    int release() { return std::exchange(m_descriptor, -1); }

private:
    int m_descriptor;
};

// Each of these four gives an open file, or none with the reason in words: "a folder, not a file", "not a file", "No
// such file or directory". The three that give a stream give it at its beginning, for reading. It ends where the file
// ended when it was opened, whatever is appended meanwhile; so a file without a size, such as those in which a system
// tells about itself, is empty. fileno() of it is -1.

/// Opens a regular file for reading, once and without waiting: folders, pipes and devices are refused, and so is a
/// path with a NUL.
UT_API gxDescriptor gx_open_regular(utString const& path, utString& reason);

/// The same as a stream.
UT_API gxFile gx_open_file(utString const& path, utString& reason);

/// The regular file of a descriptor, which stays open and where it is: the stream has a position of its own.
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
