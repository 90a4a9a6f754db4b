#include "coSortedList.h"

#include "utAssert.h"

void co_report_sorted_list_empty()
{
    ut_report_assert_failure(__FILE__, __LINE__,
                             "object in incorrect state for operation |CO_SORTEDLIST::remove_last | empty");
}
