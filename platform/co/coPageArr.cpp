#include "coPageArr.h"

#include "utAssert.h"

void co_report_array_index()
{
    ut_report_assert_failure(__FILE__, __LINE__, "argument out of range | CO_PAGEARR::index");
}
