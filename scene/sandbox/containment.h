// What a process gives up before it reads what comes from anybody. Nothing of it comes back.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace sandbox {

/// What a process gave up. The kernel may know less than is asked for, and then the others hold.
struct Containment
{
    bool no_new_privileges = false;
    bool limits = false;
    bool filter = false;
    int landlock = 0; ///< the version of what the kernel has of it, from 1; 0 for none

    /// What is in force, in words: "no new privileges", "limits", "Landlock (ABI 7)", "seccomp".
    std::vector<std::string> words() const;
};

/// Keeps this process from gaining privileges (no_new_privs), from leaving a core (and from being dumpable), from writing
/// files beyond a size, and by refuse_system_calls() from the rest; where there is no such filter, from further processes
/// by their number, which does not count for root.
/// @param largest_file  bytes of the file that it was handed for writing; 0 where there is none
Containment contain_process(std::uint64_t largest_file = 0);

/// Has Landlock let this process open files for reading alone, and only the places and what is beneath them; with it go,
/// as far as the kernel knows of them, TCP, signals to others and their abstract sockets. Files that are open stay so.
/// A second call can take places away, and add none.
/// @param places  folders and files; those that are missing are passed over
/// @return Containment::landlock
int restrict_reading(std::vector<std::string> const& places);

/// Has the kernel refuse this process sockets, programs, further processes (threads may be), tracing, signals to others,
/// opening files for writing, truncating, renaming, removing and making them, raising its limits, and what only the
/// system's own programs call. Such a call fails with "Operation not permitted", so that a loader fails softly.
/// @return whether it is in force
bool refuse_system_calls();

} // namespace sandbox
