// What the tests share: reports, folders, files.
#pragma once

#include <gtest/gtest.h>

#include <filesystem>
#include <string>
#include <vector>

/// The reports made since the last call, in order, each "FILE: MESSAGE". A report that a test leaves behind
/// fails it; so does a file handle.
std::vector<std::string> reports();

/// How many files this process has open.
std::ptrdiff_t count_open_files();

/// A folder of the test's own, empty at first, removed with all that is in it at the end of its life.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    TestFolder(TestFolder const&) = delete;
    TestFolder& operator=(TestFolder const&) = delete;

    std::string path(std::string const& name) const { return (m_path / name).string(); }

private:
    std::filesystem::path m_path;
};

std::string read_bytes(std::string const& path);
void write_bytes(std::string const& path, std::string const& bytes);

/// A file of the project's folder samples/.
std::string sample(std::string const& name);
