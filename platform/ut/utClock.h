// The calendar time.
#pragma once

#include "utExport.h"

#include <ctime>

/// The one place that the time of day comes from, so that a test needs no waiting.
class UT_API utClock
{
public:
    /// Seconds since the start of 1970 in UTC: the system's, unless a time is set.
    static std::time_t now();

    /// From here on now() gives this time, which stands still.
    static void set(std::time_t time);

    /// From here on now() gives the system's time again.
    static void unset();
};
