// Reading files in this process: in the helper, or for a scReader that is to read here. Not installed.
#pragma once

#include "notes.h"
#include "scExport.h"

#include "dgCounted.h"
#include "gxImageFileUtils.h"

namespace sc {

// The reasons begin with what the file is not: "not a readable scene: ".

Expected<scScene> read_materials_here(std::string const& path);
Expected<std::vector<scSurface>> read_surfaces_here(std::string const& path);
/// @param file  the descriptor of a regular file
Expected<dgCounted<dgDuctImage>> read_image_here(int file, gxImageFileFormat format);

// Kinds of contents: the helper's first argument. A path follows; an image comes through standard input, whatever path
// is given.
inline constexpr char materials_wanted[] = "materials";
/// The helper writes them into a sandbox::Room, which is its standard input, and the number of their bytes to standard
/// output.
inline constexpr char surfaces_wanted[] = "surfaces";
inline constexpr char image_wanted[] = "image:";            ///< and the number of the format
inline constexpr char containment_wanted[] = "containment"; ///< of the helper itself, in words

/// The helper: contains itself, reads the file and writes what is in it, or why nothing is, to standard output.
/// @return the exit status
SC_API int run_reader(std::string const& what, std::string const& path);

} // namespace sc
