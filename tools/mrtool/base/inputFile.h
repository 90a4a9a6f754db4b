// Opening a file that the program reads itself.
#pragma once

#include <fstream>
#include <string>

namespace mrtool {

/// Opens a regular file for reading.
/// @param fault  receives in words why it cannot be; emptied when it can
/// @return a stream that has failed where it cannot be
std::ifstream open_input(std::string const& path, std::string& fault);

/// How it is said: "cannot be opened: FAULT".
std::string cannot_be_opened(std::string const& fault);

} // namespace mrtool
