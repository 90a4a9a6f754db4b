// Messages on standard error while the program works.
#pragma once

#include "fault.h"

#include <chrono>
#include <cstddef>
#include <new>
#include <string_view>

namespace mrtool {

/// Reports on a file: "mrtool: FILE: WORDS".
void say(std::string_view file, std::string_view words);

/// Reports what is wrong with a file: "mrtool: FILE:LINE: WORDS", without the line when it is 0.
void say(std::string_view file, Fault const& fault);

/// Reports the fault of a result on a file.
/// @return whether there is none
template <class T>
bool check_result(std::string_view file, Result<T> const& result)
{
    if (!result)
        say(file, result.error());
    return result.has_value();
}

/// Does the work on a file; reports when there is too little memory for it.
/// @return false then, else what @p work returns
template <class Work>
bool try_work(std::string_view file, Work const& work)
{
    try {
        return work();
    } catch (std::bad_alloc const&) {
        say(file, "not enough memory");
        return false;
    }
}

/// A line on a terminal that counts what is done and estimates the time left. It does nothing when standard error is
/// no terminal.
class Progress
{
public:
    explicit Progress(std::size_t total);
    /// Removes the line.
    ~Progress();
    Progress(Progress const&) = delete;
    Progress& operator=(Progress const&) = delete;

    /// Shows which item begins now; those before it are done.
    void begin(std::string_view name);

private:
    using Clock = std::chrono::steady_clock;

    std::size_t m_total;
    std::size_t m_begun = 0;
    Clock::time_point m_start = Clock::now();
    Clock::time_point m_shown;
};

} // namespace mrtool
