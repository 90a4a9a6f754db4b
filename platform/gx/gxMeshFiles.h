// How Assimp is given files. Not installed: no installed header needs Assimp.
#pragma once

#include "gxOpenFile.h"
#include "utString.h"

#include <assimp/DefaultIOStream.h>
#include <assimp/DefaultIOSystem.h>

#include <cstddef>
#include <stdexcept>
#include <utility>

/// A file that is given up when a reader asks for more at its end for ever, as PLY's does where one is cut.
class gxMeshFile final : public Assimp::DefaultIOStream
{
public:
    gxMeshFile(gxFile file, char const* path) : DefaultIOStream(file.release(), path) {}

    /// @throws std::runtime_error after a thousand reads in vain, which Assimp turns into its error message
    std::size_t Read(void* buffer, std::size_t size, std::size_t count) override
    {
        std::size_t const read = DefaultIOStream::Read(buffer, size, count);
        m_vain_reads = read > 0 ? 0 : m_vain_reads + 1;
        if (m_vain_reads > 1000)
            throw std::runtime_error("the file ends too early");
        return read;
    }

private:
    int m_vain_reads = 0;
};

/// Opens regular files alone, for reading: the file itself, and those that it names.
class gxMeshFiles final : public Assimp::DefaultIOSystem
{
public:
    bool Exists(char const* path) const override
    {
        utString reason;
        return gx_open_file(path, reason) != nullptr;
    }

    Assimp::IOStream* Open(char const* path, char const*) override
    {
        utString reason;
        gxFile file = gx_open_file(path, reason);
        return file ? new gxMeshFile(std::move(file), path) : nullptr;
    }
};
