// What it takes to look after other processes.
#pragma once

#include <chrono>
#include <cstdint>
#include <string>
#include <sys/types.h>

namespace mrtool {

using ProcessClock = std::chrono::steady_clock;

/// Takes what a pipe or a socket holds; waits while it holds nothing.
/// @return false at its end
bool drain(int file, std::string& into);

/// For poll(): rounded up, 0 when the deadline is over.
int milliseconds_until(ProcessClock::time_point deadline);

/// Waits for a child's end.
/// @param status  receives what waitpid() tells
/// @return false when it lives on at the deadline
bool ended(pid_t child, ProcessClock::time_point deadline, int& status);

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

} // namespace mrtool
