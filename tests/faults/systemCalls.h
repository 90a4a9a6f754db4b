// Work during which system calls fail.
#pragma once

#include <functional>
#include <string>

struct FaultyWork
{
    std::string name;
    std::function<void()> prepare;
    std::function<void()> work; ///< in which calls fail
    /// @return what is wrong afterwards, or an empty text
    std::function<std::string()> judge;
};

/// Does the work again and again, each time in a child process of its own in which one more call passes before one
/// fails: open, read, write, seek, fsync, close or rename, in any form. A write fails as on a full disk, the others as
/// on a broken one; what is closed is closed all the same. Then once more, with all calls from there on failing.
///
/// Fails the test where a child crashes, leaves a file open, or ends with something wrong. Prints how many faults
/// there were.
///
/// The kernel sends the child a signal in the place of each such call (seccomp), whoever makes it, stdio too.
void fail_every_call(FaultyWork const& faulty);

/// Whether that works here.
bool can_fail_calls();
