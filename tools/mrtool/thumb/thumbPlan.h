// Which thumbnails are to be made, and where they go.
#pragma once

#include "fileKind.h"

#include <optional>
#include <string>
#include <vector>

namespace mrtool {

/// What an input that comes first has become already.
struct Failure
{
    std::string path;
    std::string reason;
};

struct ThumbJob
{
    std::string input;
    KnownFile file;
    std::string output;
};

struct ThumbPlan
{
    std::vector<ThumbJob> jobs;
    std::vector<Failure> failures; ///< inputs that cannot be read or are no kind of file that is drawn
    std::string wrong_usage;       ///< why nothing may be written: two inputs with one output, and the like
};

/// Works out the thumbnails of files, and of all files of the three kinds in folders and their subfolders.
/// Links to folders are not followed; NAME.thumb.png found in a folder is no input; an output folder below
/// one that is walked is not walked.
///
/// @param output  without it, the thumbnail of DIR/NAME.EXT is DIR/NAME.EXT.thumb.png. For one input that is
///                a file, it is the thumbnail, unless there is a folder of that name or it ends in "/". In
///                all other cases it is a folder, in which each thumbnail has its input's path below the
///                folder that was given, as NAME.EXT.png
ThumbPlan plan_thumbs(std::vector<std::string> const& inputs, std::optional<std::string> const& output);

} // namespace mrtool
