// The reports that the library makes.
#pragma once

#include "utAssert.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace mrtool {

/// Collects the library's reports while it lives, so that each can be shown with the file that it is about. Only
/// one may live at a time.
class Reports
{
public:
    Reports() { ut_set_assert_handler(collect); }
    ~Reports() { ut_set_assert_handler(nullptr); }
    Reports(Reports const&) = delete;
    Reports& operator=(Reports const&) = delete;

    /// Removes the reports made since the last call.
    /// @return each message once, in the order of first occurrence
    static std::vector<std::string> pop() { return std::exchange(collected, {}); }

private:
    static void collect(char const*, int, char const* message)
    {
        if (std::find(collected.begin(), collected.end(), message) == collected.end())
            collected.emplace_back(message);
    }

    static inline std::vector<std::string> collected;
};

} // namespace mrtool
