// Child processes: a program run with limits, its output caught, and what it takes to look after others.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <string>
#include <sys/types.h>
#include <vector>

namespace sandbox {

/// Whether this is a build with the address sanitizer, which takes terabytes of address space, reads /proc, and starts a
/// process that traces its own at the end.
constexpr bool under_address_sanitizer()
{
#if defined(__SANITIZE_ADDRESS__)
    return true;
#elif defined(__has_feature)
    return __has_feature(address_sanitizer);
#else
    return false;
#endif
}

struct ChildLimits
{
    std::chrono::milliseconds time{60'000};
    /// Bytes of address space. Not kept under the address sanitizer, which takes terabytes of it.
    std::uint64_t memory = std::uint64_t{2} << 30;
    /// Bytes that it may write, to standard output and standard error together.
    std::uint64_t output = std::uint64_t{2} << 30;
};

enum class ChildEnd
{
    finished,        ///< by itself, with an exit status
    crashed,         ///< by a signal
    out_of_time,     ///< killed when its time was up
    out_of_memory,   ///< asked for more memory than it was given
    too_much_output, ///< killed when it wrote more than it may
    no_room,         ///< killed when this process found no memory for its output
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

/// Runs a program and waits for its end or the limits, at which it is killed with all of its process group, which is
/// one of its own. The child is gone afterwards.
///
/// Its standard output is caught, no further than the limit; what it writes to standard error is shown to nobody; it has
/// no other open file. It dies with its parent, however that ends.
/// @param arguments  the path of the program, then what it is given
/// @param input      its standard input, or -1 for an empty one
ChildResult run_child(std::vector<std::string> const& arguments, ChildLimits const& limits, int input = -1);

/// Tells a child's end from what waitpid() says of it.
/// @param last_words  what it wrote to standard error, the end of it at least
void judge(int status, std::string const& last_words, ChildResult& result);

/// Describes how a child failed, one that did not finish with status 0: "took longer than 60 s".
std::string describe(ChildResult const& result, ChildLimits const& limits);

/// Takes some of what a pipe or a socket holds; waits while it holds nothing.
/// @param most  bytes to take at most, above 0
/// @return false at its end
bool drain(int file, std::string& into, std::size_t most);

/// The end of the time that another process has, which nothing moves. While this process stands still, stopped by its
/// user, the time goes on, and so does the other process, in a group of its own; so what is there at that end still
/// counts.
class Deadline
{
public:
    explicit Deadline(std::chrono::milliseconds time) : m_end(Clock::now() + time) {}

    /// How long to wait, in milliseconds; 0 when the time is over.
    int wait() const;

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_end;
};

/// Waits for a child's end.
/// @param status  receives what waitpid() tells
/// @return false when it lives on at the deadline
bool ended(pid_t child, Deadline const& deadline, int& status);

/// Kills a child and the process group that it leads, if it does. Afterwards the child is gone.
/// @return what waitpid() tells
int kill_child(pid_t child);

// In a child, also between fork and exec.

/// Has this process get the signal when its parent ends, however that ends.
/// @param parent  who started it; where that is gone already, this process ends now
void die_with(pid_t parent, int signal);

/// Keeps this process from using more of a resource, and from leaving a core file.
/// @param resource  RLIMIT_AS or RLIMIT_DATA. Not limited under the address sanitizer, which takes terabytes
void limit_memory(int resource, std::uint64_t bytes);

} // namespace sandbox
