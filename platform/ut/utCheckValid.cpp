#include "utCheckValid.h"

#include "utAssert.h"

utCheckValid::~utCheckValid()
{
    // Through volatile: a compiler may drop an ordinary store into an object that is about to end.
    *const_cast<void const* volatile*>(&m_object) = nullptr;
}

void utCheckValid::report(char const* file, int line)
{
    ut_report_assert_failure(file, line, "Invalid object");
}
