#include "readFile.h"

#include "mrColourPalette.h"
#include "mrUtils.h"
#include "utConcat.h"

namespace mrtool {

std::string describe_read_fault(mrFileMatReadStatus status, std::string_view words)
{
    switch (status) {
    case mrFileMatOpenFailed:
        return ut_concat("cannot be opened: ", words);
    case mrFileMatNoDocument:
        return ut_concat("not a material file: ", words);
    default:
        return ut_concat("bad content: ", words);
    }
}

Result<> read_palette(mrSource const& source, mrColourPalette& palette, Fault& warning)
{
    mrFault fault;
    mrPaletteFileError const status = mrUtils::read_pcp(source, palette, fault);
    std::string const reason(fault.reason.view());
    if (status == mrPaletteFileOpenFailed)
        return fail(describe_read_fault(mrFileMatOpenFailed, reason));
    if (status == mrPaletteFileOK && palette.empty() && reason.empty())
        return fail("it holds no colour");
    bool const read_failed = !reason.empty() && fault.line == 0;
    if (status != mrPaletteFileOK || palette.empty() || read_failed)
        return fail(reason, fault.line);
    warning = {reason, fault.line};
    return {};
}

} // namespace mrtool
