// Jobs done by processes of their own.
#pragma once

#include "childProcess.h"

#include <cstddef>
#include <functional>
#include <string>
#include <sys/types.h>
#include <vector>

namespace mrtool {

struct JobResult
{
    bool made = false;
    std::vector<std::string> messages;
};

/// Jobs that are numbered from 0 on.
struct Jobs
{
    std::size_t count = 0;
    /// Does a job, in the worker: what it changes in memory, only later jobs of that worker see. It writes
    /// nothing to standard output and standard error.
    std::function<JobResult(std::size_t)> work;

    // Called in the program's own process, for each job once, in order.

    std::function<void(std::size_t)> begun;
    std::function<void(std::size_t, JobResult const&)> done;
    /// In the place of done(), when the worker ended before the job did.
    /// @param worker  the process, which is gone; -1 when there was none
    /// @param fate    what became of it: "crashed (signal 11)"
    std::function<void(std::size_t, pid_t worker, std::string const& fate)> lost;
};

struct WorkerLimits
{
    /// The time is that of one job. The memory is all that a worker may write to and shares with nobody, as Linux
    /// counts RLIMIT_DATA: address space alone says little, since drivers and threads reserve gigabytes of it.
    /// The output is what a result takes.
    sandbox::ChildLimits job{std::chrono::minutes(5), std::uint64_t{4} << 30, std::uint64_t{16} << 20};

    // After a job that reaches one of these, the next worker takes over.

    int jobs = 256;
    std::uint64_t resident = std::uint64_t{512} << 20; ///< bytes of memory in use
};

/// Does all jobs, one after the other, in a process forked off this one: what a job does to its process, and
/// what it leaves in memory, ends with that. A job whose worker ends, or is ended at its limits, is lost, and
/// the next worker goes on behind it.
///
/// To be called before there are threads. A worker ends with the program, by SIGTERM, as it does when its time
/// is up; what does not heed that is killed.
void run_in_workers(Jobs const& jobs, WorkerLimits const& limits = {});

} // namespace mrtool
