// Jobs done in processes of their own.
#pragma once

#include "childProcess.h"

#include <functional>
#include <sys/types.h>

namespace mrtool {

struct JobResult
{
    bool made = false;
    std::vector<std::string> messages; ///< a message ends at its first NUL; empty ones are dropped
};

/// Jobs numbered from 0.
struct Jobs
{
    std::size_t count = 0;
    /// Does a job, in a worker. Only later jobs of that worker see what it changes in memory. It writes nothing to
    /// standard output and standard error.
    std::function<JobResult(std::size_t)> work;

    // These are called in the program's own process, for each job in order.

    std::function<void(std::size_t)> begun;
    std::function<void(std::size_t, JobResult const&)> done;
    /// Called instead of done() when the worker ended before the job did.
    /// @param fate  how it ended: "crashed (signal 11)"
    std::function<void(std::size_t, std::string const& fate)> lost;
};

struct WorkerLimits
{
    /// Time of one job, memory of a worker, bytes of a result. The memory is Linux's RLIMIT_DATA: what the process
    /// can write to and shares with nobody. Address space says little, since drivers and threads reserve
    /// gigabytes of it.
    sandbox::ChildLimits job{std::chrono::minutes(5), std::uint64_t{4} << 30, std::uint64_t{16} << 20};

    // A new worker replaces one that has reached either of these after a job.

    int jobs = 256;
    std::uint64_t resident = std::uint64_t{512} << 20; ///< bytes of memory in use
};

/// Does all jobs, one after the other, in a process forked off this one, so that a crash or a leak of a job ends
/// with that process. A job is lost when its worker ends or exceeds a limit; the next worker continues with the
/// next job.
///
/// Call it before threads are started. A worker ends with the program or when its time is up: by SIGTERM, then by
/// SIGKILL.
void run_in_workers(Jobs const& jobs, WorkerLimits const& limits = {});

} // namespace mrtool
