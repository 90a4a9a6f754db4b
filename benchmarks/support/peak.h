// The memory that reading a file takes.
#pragma once

#include <string>

/// The most memory that a process of its own held while it read the material file, in bytes, all that the
/// process itself needs included. Ends the program when the file is not read.
double peak_of_reading(std::string const& material_file);
