// A program run with limits, its output caught.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

namespace sandbox {

struct ChildLimits
{
    std::chrono::milliseconds time{60'000};
    /// Bytes of address space. Not kept under the address sanitizer, which takes terabytes of it.
    std::uint64_t memory = std::uint64_t{2} << 30;
    /// Bytes of output.
    std::uint64_t output = std::uint64_t{2} << 30;
};

enum class ChildEnd
{
    finished,        ///< by itself, with an exit status
    crashed,         ///< by a signal
    out_of_time,     ///< killed when its time was up
    out_of_memory,   ///< asked for more memory than it was given
    too_much_output, ///< killed when it wrote more than it may
    not_started
};

struct ChildResult
{
    ChildEnd end = ChildEnd::not_started;
    int code = 0;       ///< exit status when finished, signal when crashed, errno when not started
    std::string output; ///< all of it when finished, else what came until then
};

/// The exit status by which a child says that it could get no more memory.
inline constexpr int child_out_of_memory = 77;

/// Runs a program and waits for its end or the limits, at which it is killed. Afterwards there is no child.
///
/// Its standard output is caught, what it writes to standard error is shown to nobody, and it dies with its
/// parent, however that ends.
/// @param arguments  the path of the program, then what it is given
/// @param input      its standard input, or -1 for an empty one
ChildResult run_child(std::vector<std::string> const& arguments, ChildLimits const& limits, int input = -1);

/// Tells a child's end from what waitpid() says of it.
/// @param last_words  what it wrote to standard error, the end of it at least
void judge(int status, std::string const& last_words, ChildResult& result);

/// What became of a child that did not finish with status 0, in words: "took longer than 60 s".
std::string describe(ChildResult const& result, ChildLimits const& limits);

} // namespace sandbox
