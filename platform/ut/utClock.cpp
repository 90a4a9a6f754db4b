#include "utClock.h"

#include <optional>

namespace {

std::optional<std::time_t> time_set;

} // namespace

std::time_t utClock::now()
{
    return time_set ? *time_set : std::time(nullptr);
}

void utClock::set(std::time_t time)
{
    time_set = time;
}

void utClock::unset()
{
    time_set.reset();
}
