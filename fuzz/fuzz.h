// What the fuzz targets share.
#pragma once

#include <string>

/// Hands one input to the code that is tried. Every target has one.
void try_input(std::string const& bytes);

/// Stops the run, and the input is kept, unless the condition holds.
/// @param words  what should have held
void require(bool condition, char const* words);

/// A file in memory, for readers and writers that take a path.
class MemoryFile
{
public:
    explicit MemoryFile(std::string const& bytes = {});
    ~MemoryFile();
    MemoryFile(MemoryFile const&) = delete;
    MemoryFile& operator=(MemoryFile const&) = delete;

    std::string const& path() const { return m_path; }

private:
    int m_descriptor;
    std::string m_path;
};

/// The bytes, the checksum of each chunk of the PNG images among them put right: an image with a wrong one is
/// refused before its content is looked at.
std::string with_checksums(std::string bytes);
