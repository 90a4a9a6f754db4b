// Files that the program reads.
#pragma once

#include "fault.h"

#include "gxOpenFile.h"

#include <cstddef>
#include <optional>
#include <string>

namespace mrtool {

/// Bytes that are taken from a pipe.
inline constexpr std::size_t max_piped_bytes = std::size_t{256} << 20;

/// The open file that an argument names on purpose: standard input by "-" or "/dev/stdin", any by "/dev/fd/N", which a
/// shell makes of "<(...)", or "/proc/self/fd/N". Any other path names none, whatever lies there.
std::optional<int> named_descriptor(std::string const& argument);

/// The path by which the bytes of an argument are opened, if it is no pipe.
std::string find_opened_path(std::string const& argument);

struct InputFile
{
    std::string path;   ///< by which it is opened
    gxDescriptor piped; ///< the copy of what came through a pipe, which the path leads to
};

/// Finds the bytes of an argument. An open file that it names is read to its end when it is no regular file: a pipe, a
/// terminal. Only this process and those forked off it have the copy.
/// @return else the reason why it cannot be opened; a path is not looked at
Result<InputFile> find_input(std::string const& argument);

} // namespace mrtool
