// What is in a file.
#pragma once

#include "cacheFile.h"
#include "paletteFile.h"
#include "readOutcome.h"

#include "mrFileMat.h"
#include "mrTypes.h"

#include <string>
#include <variant>

namespace mrtool {

struct MaterialContents
{
    mrImageEncapsulationType encapsulation = mrImageEncapsulationNone;
    mrFileMat material;
};

/// A file of one of the library's own formats, read or not.
struct FileInfo
{
    std::string path;
    ReadOutcome outcome;
    /// Of the format that the file was read as; complete when it reads.
    std::variant<MaterialContents, PaletteFile, CacheContents> contents;
};

/// Warnings of a material file are a layer whose image is missing, an image that no layer uses, and what of
/// the file the library leaves out; those of the others are in the functions that read them.
/// @param info  a new one, to be filled
void read_file_info(std::string const& path, FileInfo& info);

/// The contents for a reader: one line for each value.
std::string info_text(FileInfo const& info);

/// The contents for a program: a JSON object, in UTF-8.
std::string info_json(FileInfo const& info);

} // namespace mrtool
