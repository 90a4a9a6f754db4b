#include "paletteFile.h"

#include "inputFile.h"
#include "progress.h"

#include "mrFault.h"
#include "mrUtils.h"

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
    say(path, Fault{file.status == mrPaletteFileOpenFailed ? cannot_be_opened(file.remark) : file.remark,
                    file.line});
}

} // namespace mrtool
