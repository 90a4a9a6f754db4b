#include "coTable.h"

#include "utAssert.h"

void co_report_null_key_member()
{
    ut_report_assert_failure(__FILE__, __LINE__, "argument out of range | CO_TABLE::member | null key");
}

void co_report_null_key_read()
{
    ut_report_assert_failure(__FILE__, __LINE__, "argument out of range | CO_TABLE::read | null key");
}
