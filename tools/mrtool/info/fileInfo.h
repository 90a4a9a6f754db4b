// What is in a file of the library's own formats.
#pragma once

#include "paletteFile.h"

#include "mrFileMat.h"
#include "mrTypes.h"

#include <cstdint>
#include <string>
#include <variant>
#include <vector>

namespace mrtool {

struct MaterialContents
{
    mrFileMat material;
};

/// An image cache file, its entries as the library would take them: hash value and image by the image's title, the
/// age from the line of the same rank.
struct CacheContents
{
    struct Entry
    {
        int hash = 0;
        int age = 0;
        std::string image_name;
        int width = 0;
        int height = 0;
    };

    int max_cache_size = 0;
    int shrinkage = 0;
    std::vector<Entry> entries;
};

/// A file, read or not.
struct FileInfo
{
    std::string path;
    /// What the library's reader says. A palette has the like of it.
    mrFileMatReadStatus status = mrFileMatOpenFailed;
    std::string fault;                 ///< what is wrong, of a file that does not read
    std::int64_t line = 0;             ///< that the fault is in, from 1, where the fault does not say it
    std::vector<std::string> warnings; ///< what of a file that reads is not as it should be
    /// Of the format that the file was read as; complete when it reads.
    std::variant<MaterialContents, PaletteFile, CacheContents> contents;

    bool is_read() const { return status == mrFileMatReadOK; }
};

/// Reads a file, which is opened once. Warnings of a material file are a layer whose image is missing, an image that no
/// layer uses, and what of the file the library leaves out; of an image cache file what the library reports or passes
/// over.
/// @param info  a new one, to be filled
void read_file_info(std::string const& path, FileInfo& info);

/// The date and time of an age, in this machine's local time: "2026-10-12 09:20:00".
std::string format_age(int age);

/// The contents for a person: one line for each value.
std::string make_text(FileInfo const& info);

/// The contents for a program: a JSON object, in UTF-8.
std::string make_json(FileInfo const& info);

} // namespace mrtool
