#include "mrFault.h"

#include "utConcat.h"

utString mrFault::words() const
{
    if (!part.invalid())
        return utString(byte < 0 ? ut_concat(part, ": ", reason)
                                 : ut_concat(part, ", at byte ", byte, ": ", reason));
    if (column > 0)
        return utString(ut_concat("line ", line, ", column ", column, ": ", reason));
    return utString(reason.view());
}

void mrFault::within(utString const& larger)
{
    part = part.invalid() ? larger : utString(ut_concat(larger, ": ", part));
}
