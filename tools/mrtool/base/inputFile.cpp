#include "inputFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <system_error>

namespace mrtool {

namespace fs = std::filesystem;

std::ifstream open_input(std::string const& path, std::string& fault)
{
    fault.clear();
    std::error_code failed;
    fs::file_status const status = fs::status(path, failed);
    // Opening a pipe would wait for somebody to write to it.
    if (fs::exists(status) && !fs::is_regular_file(status)) {
        fault = fs::is_directory(status) ? "a folder, not a file" : "not a file";
        std::ifstream none;
        none.setstate(std::ios::failbit);
        return none;
    }
    errno = 0;
    std::ifstream in(path, std::ios::binary);
    if (!in)
        fault = std::strerror(errno);
    return in;
}

std::string cannot_be_opened(std::string const& fault)
{
    return "cannot be opened: " + fault;
}

} // namespace mrtool
