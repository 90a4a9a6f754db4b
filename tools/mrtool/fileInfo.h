// What is in a file.
#pragma once

#include "mrFileMat.h"
#include "mrTypes.h"

#include <string>
#include <vector>

namespace mrtool {

/// A material file, read or not.
struct FileInfo
{
    std::string path;
    mrFileMatReadStatus status = mrFileMatOpenFailed;
    /// Of a file that does not read, what is wrong and where.
    std::string fault;

    // Of one that reads.

    mrImageEncapsulationType encapsulation = mrImageEncapsulationNone;
    mrFileMat material;
    /// What is not as it should be: a layer whose image is missing, an image that no layer uses, and what of the
    /// file the library leaves out.
    std::vector<std::string> warnings;
};

/// @param info  a new one, to be filled
void read_file_info(std::string const& path, FileInfo& info);

/// The contents for a reader: one line for each value.
std::string info_text(FileInfo const& info);

/// The contents for a program: a JSON object, in UTF-8.
std::string info_json(FileInfo const& info);

} // namespace mrtool
