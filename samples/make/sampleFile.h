// Writing sample files.
#pragma once

#include <filesystem>
#include <string>

/// Writes the file, and the folder it lies in where that is missing.
/// Throws std::runtime_error when it cannot.
void write_file(std::filesystem::path const& path, std::string const& bytes);

/// The number with so many decimals, without zeros at its end.
std::string decimal(double value, int decimals);

/// Appends the lowest bytes of a whole number, the lowest first.
void append_bytes(std::string& bytes, unsigned value, int count);

/// Appends the four bytes of a real number of 32 bits, the lowest first.
void append_float(std::string& bytes, double value);
