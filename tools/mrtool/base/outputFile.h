// Files that the program writes.
#pragma once

#include "fault.h"

#include <cstdio>
#include <functional>
#include <sys/types.h>

class dgDuctImage;

namespace mrtool {

/// Writes a file under a temporary name beside its own and renames it when it is complete, so that the path holds
/// the old file or the whole new one. The folder is made when missing.
/// @param write  writes the file with the temporary name
Result<> write_whole(std::string const& path,
                     std::function<Result<>(std::string const& temporary)> const& write);

/// Fills the temporary file of write_whole().
/// @param path   what the fault names
/// @param write  writes to the open file
/// @return else the fault "PATH cannot be written: REASON"
Result<> write_temporary(std::string const& path, std::string const& temporary,
                         std::function<bool(std::FILE*)> const& write);

/// Writes a PNG file the same way.
Result<> write_png(dgDuctImage const& image, std::string const& path);

/// Checks that a picture may be written to a path: nothing is there, or a picture or an empty file. Anything else
/// is somebody's work, or a device.
/// @return else the fault "which is no picture" or "which is no file"
Result<> check_picture_path(std::string const& path);

/// Whether a file of this name is a temporary one.
bool is_pending_name(std::string_view name);

/// Removes the temporary files that a process, which has ended, left beside a path.
void remove_left_over(std::string const& path, pid_t process);

/// From now on, a program that is interrupted removes its temporary file before it ends.
void remove_pending_file_on_interrupt();

} // namespace mrtool
