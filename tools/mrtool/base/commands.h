// The program's subcommands.
#pragma once

#include "gsRGB.h"

#include <optional>
#include <string>
#include <vector>

namespace mrtool {

/// Exit statuses.
inline constexpr int all_well = 0;
inline constexpr int something_failed = 1; ///< it was named, the rest was done
inline constexpr int wrong_usage = 2;      ///< nothing was done

/// Thrown when what was asked for makes no sense; nothing has been written then.
struct WrongUsage
{
    std::string words;
};

struct ThumbOptions
{
    static constexpr int max_side = 8191;

    std::vector<std::string> inputs;
    std::optional<std::string> output;
    int width = 256; ///< pixels, 1 to max_side
    int height = 256;
    std::optional<char> up; ///< 'y' or 'z'
    gsRGB background{240, 240, 240};
};

struct ImportOptions
{
    std::vector<std::string> scenes;
    std::string folder;
    bool force = false; ///< whether to replace files that are there
};

struct InfoOptions
{
    std::vector<std::string> files;
    bool json = false;
};

struct PaletteOptions
{
    std::vector<std::string> files;  ///< to be drawn
    std::optional<std::string> from; ///< a palette of another format, to be converted instead
    std::string output;
    bool force = false; ///< whether to replace a palette file that is there
};

// Each does its work, says on standard error what fails, and returns the exit status.

int run_thumb(ThumbOptions const& options);
int run_import(ImportOptions const& options);
int run_info(InfoOptions const& options);
int run_palette(PaletteOptions const& options);

} // namespace mrtool
