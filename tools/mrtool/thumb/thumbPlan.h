// Which thumbnails are to be made, and where they go.
#pragma once

#include "fileKind.h"
#include "inputFile.h"

#include <optional>
#include <vector>

namespace mrtool {

struct ThumbJob
{
    std::string input;
    KnownFile file;
    std::string output;
    std::string path{}; ///< by which the input is read; its name is not, when it is a pipe
};

/// An input rejected during planning.
struct RejectedInput
{
    std::string path;
    std::string reason;
};

struct ThumbPlan
{
    std::vector<ThumbJob> jobs;
    std::vector<RejectedInput> rejected; ///< they cannot be read, or no thumbnail can be made of them
    gxDescriptor piped;                  ///< what came through a pipe
};

/// Plans the thumbnails of files, and of all files of the three kinds in folders and their subfolders. In a folder,
/// links to folders, files NAME.thumb.png and the folder that is the output are passed over. An open file that an input
/// names, see named_descriptor(), is read, and has to be the only one.
///
/// @param output  without it, the thumbnail of DIR/NAME.EXT is DIR/NAME.EXT.thumb.png. With one input that is a
///                file, it is the thumbnail, unless it is a folder or ends in "/"; "-" is standard output.
///                Otherwise it is a folder, in which each thumbnail has its input's path below the folder given, as
///                NAME.EXT.png
/// @throws WrongUsage when an output would be written twice, over links too, would replace an input or a file other
///                    than a picture, or has no place; when an open file is not the only input or has no output
ThumbPlan plan_thumbs(std::vector<std::string> const& inputs, std::optional<std::string> const& output);

} // namespace mrtool
