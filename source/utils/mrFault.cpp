#include "mrFault.h"

#include "utConcat.h"

utString mrFault::words() const
{
    if (reason.invalid())
        return {};
    if (!part.invalid())
        return utString(byte < 0 ? ut_concat(part, ": ", reason)
                                 : ut_concat(part, ", at byte ", byte, ": ", reason));
    if (column > 0)
        return utString(ut_concat("line ", line, ", column ", column, ": ", reason));
    return reason;
}

void mrFault::within(utString const& larger)
{
    part = part.invalid() ? larger : utString(ut_concat(larger, ": ", part));
}

void mrFault::set_out_of_memory() noexcept
{
    *this = {};
    ut_say(reason, "not enough memory");
}
