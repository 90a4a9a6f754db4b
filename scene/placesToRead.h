// Where the child that reads may open files.
#pragma once

#include <string>
#include <vector>

namespace sc {

/// The scene's folder, and the files outside of it that reading it takes: the scene itself when it is a link, the
/// material libraries of an OBJ file, the buffers and images of a glTF file.
std::vector<std::string> places_of_scene(std::string const& path);

/// Where the loaders of images keep what they need: libraries, types of files, fonts.
std::vector<std::string> places_of_loaders();

} // namespace sc
