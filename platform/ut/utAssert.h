// Reports of broken preconditions: where they go, and how a message is made.
#pragma once

#include "utExport.h"
#include "utString.h"

/// Takes one report. Neither text is null; both live only for the call.
using utAssertHandler = void (*)(char const* file, int line, char const* message);

/// Sets the one handler of the process; null stands for the default one, which writes a line
/// "FILE:LINE: MESSAGE" to standard error.
/// @return the handler that was set before
UT_API utAssertHandler ut_set_assert_handler(utAssertHandler handler);

/// Hands a report to the handler and returns; never stops the program.
/// @param file  path of the reporting source file, from the project's root
UT_API void ut_report_assert_failure(char const* file, int line, char const* message);
UT_API void ut_report_assert_failure(char const* file, int line, utString const& message);

/// A message made like printf makes one, of any length.
[[gnu::format(printf, 1, 2)]] UT_API utString ut_build_assert_varargs(char const* format, ...);

/// Reports @p message at this place unless @p condition holds; execution goes on either way.
#define UT_REQUIRE(condition, message)                                                                       \
    ((condition) ? void() : ut_report_assert_failure(__FILE__, __LINE__, message))
