// What a file that is to be written would take the place of.
#pragma once

#include <string>

namespace mrtool {

/// What keeps a picture from being written to a path. Only a picture or an empty file gives way to it: other work
/// would be lost, and a device.
/// @return "which is no picture" or "which is no file"; empty when nothing keeps it
std::string objection_to_picture(std::string const& path);

} // namespace mrtool
