#include "readFault.h"

#include "inputFile.h"

#include "mrFault.h"

namespace mrtool {

std::string describe_read_fault(mrFileMatReadStatus status, mrFault const& fault)
{
    return describe_read_fault(status, std::string(fault.words().view()));
}

std::string describe_read_fault(mrFileMatReadStatus status, std::string const& words)
{
    switch (status) {
    case mrFileMatOpenFailed:
        return cannot_be_opened(words);
    case mrFileMatNoDocument:
        return "not a material file: " + words;
    default:
        return "bad content: " + words;
    }
}

} // namespace mrtool
