// The contents of a file of the library's own formats.
#pragma once

#include "fault.h"

#include "mrColourPalette.h"
#include "mrFileMat.h"

#include <variant>
#include <vector>

namespace mrtool {

/// An image cache file. Its entries are those that the library would take, without evictions: hash value and image by
/// the image's title, the age from the line of the same rank.
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
    /// The status of the library's reader, or for a palette the nearest one.
    mrFileMatReadStatus status = mrFileMatOpenFailed;
    Fault fault;                       ///< why the file cannot be read
    std::vector<std::string> warnings; ///< flaws of a file that can be read
    /// Of the format that the file was read as; complete when the file can be read.
    std::variant<mrFileMat, mrColourPalette, CacheContents> contents;

    bool is_read() const { return status == mrFileMatReadOK; }
};

/// Reads a file, which is opened once, or a pipe; see find_input(). A palette has the extension "pcp" or is_palette(), an image cache file a first
/// line of two integers; any other file is read as a material.
///
/// A material file has warnings of a layer whose image is missing, of an image that
/// no layer uses, and of what the library leaves out; an image cache file of what the library reports or leaves out,
/// and of possible evictions.
/// @param info  a new object
void read_file_info(std::string const& path, FileInfo& info);

/// Returns the date and time of an age, in this machine's local time: "2026-10-12 09:20:00".
std::string format_age(int age);

/// Lists the contents for a person, one value a line.
std::string make_text(FileInfo const& info);

/// Makes a JSON object of the contents, in UTF-8.
std::string make_json(FileInfo const& info);

} // namespace mrtool
