// What it takes to look after other processes.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <sys/types.h>

namespace sandbox {

/// Takes what a pipe or a socket holds; waits while it holds nothing.
/// @return false at its end
bool drain(int file, std::string& into);

/// The time that another process has. What passes while this one stands still, stopped by its user, does not
/// count: the other mostly stands still too.
class Deadline
{
public:
    explicit Deadline(std::chrono::milliseconds time) : m_end(Clock::now() + time) {}

    /// How long to wait, in milliseconds, before asking again; 0 when the time is over.
    int wait();

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point m_end;
    Clock::time_point m_asked = Clock::now();
};

/// Waits for a child's end.
/// @param status  receives what waitpid() tells
/// @return false when it lives on at the deadline
bool ended(pid_t child, Deadline& deadline, int& status);

/// Kills a child. Afterwards it is gone.
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
