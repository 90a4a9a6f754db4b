#include "overwriteGuard.h"

#include "fileKind.h"

#include <filesystem>

namespace mrtool {

namespace fs = std::filesystem;

std::string objection_to_picture(std::string const& path)
{
    std::error_code ignored;
    fs::file_status const status = fs::status(path, ignored);
    if (!fs::exists(status))
        return {};
    if (!fs::is_regular_file(status))
        return "which is no file";
    bool const gives_way = fs::file_size(path, ignored) == 0 || file_kind(path).kind == FileKind::image;
    return gives_way ? "" : "which is no picture";
}

} // namespace mrtool
