#include "paletteFile.h"

#include "inputFile.h"
#include "messages.h"

#include "mrFault.h"
#include "mrUtils.h"
#include "utConcat.h"

namespace mrtool {

void read_palette_file(mrSource const& source, PaletteFile& file)
{
    mrFault fault;
    file.status = mrUtils::read_pcp(source, file.palette, fault);
    file.line = fault.line;
    file.remark = fault.reason.view();
    if (file.status != mrPaletteFileOK || !file.palette.empty())
        return;
    file.status = mrPaletteFileBadFormat;
    if (file.remark.empty())
        file.remark = "it holds no colour";
}

void say_remark(std::string const& path, PaletteFile const& file)
{
    if (file.remark.empty())
        return;
    std::string const place = file.line > 0 ? ut_concat(path, ":", file.line) : path;
    say(place, file.status == mrPaletteFileOpenFailed ? cannot_be_opened(file.remark) : file.remark);
}

} // namespace mrtool
