// Files that the program writes.
#pragma once

#include "fault.h"

#include <cstdio>
#include <functional>
#include <string_view>

class dgDuctImage;

namespace mrtool {

/// The name of an output that means standard output.
inline constexpr std::string_view standard_output = "-";

/// Writes a file beside its place and has it take the place when it is complete, see gxReplacement, so that the path
/// holds the older file or the whole new one. The folder is made when missing. What earlier runs left there when they
/// were killed is removed, once for each folder in the life of this process.
/// @param path   a new or a regular file, which allows writing, or standard output
/// @param write  writes to the open file
/// @return else the fault "PATH cannot be written: REASON"
Result<> write_file(std::string const& path, std::function<bool(std::FILE*)> const& write);

Result<> write_bytes(std::string const& path, std::string_view bytes);
Result<> write_png(dgDuctImage const& image, std::string const& path);

// These check what an output would replace; standard output replaces nothing.

/// Nothing or a regular file, over links too.
/// @return else the fault "which is no file"
Result<> check_output_path(std::string const& path);

/// Nothing, a picture or an empty file. Anything else is somebody's work.
/// @return else also the fault "which is no picture"
Result<> check_picture_path(std::string const& path);

/// From now on, a program that is interrupted removes its temporary file before it ends.
void remove_pending_file_on_interrupt();

} // namespace mrtool
