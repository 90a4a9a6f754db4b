// What scReader and the child that reads for it agree on. Not installed.
#pragma once

#include "scExport.h"

#include <string>

namespace sc {

// What to read: the helper's first argument; a path follows.
inline constexpr char materials_wanted[] = "materials";
inline constexpr char surfaces_wanted[] = "surfaces";
inline constexpr char image_wanted[] = "image:"; ///< and the number of the format

/// The helper: reads the file and writes what is in it, or why nothing is, to standard output.
/// @return the exit status
SC_API int run_reader(std::string const& what, std::string const& path);

} // namespace sc
