#include "workers.h"

#include "mrTest.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <chrono>
#include <csignal>
#include <new>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace mrtool {

using namespace std::chrono_literals;
using testing::ElementsAre;

namespace {

/// Runs the jobs.
/// @return "NUMBER: how it ended" for each of them
std::vector<std::string> run(std::vector<std::function<JobResult()>> const& works, WorkerLimits const& limits)
{
    std::vector<std::string> outcomes;
    Jobs jobs;
    jobs.count = works.size();
    jobs.work = [&](std::size_t number) { return works[number](); };
    jobs.begun = [&](std::size_t number) { outcomes.push_back(std::to_string(number) + ": "); };
    jobs.done = [&](std::size_t, JobResult const& result) {
        outcomes.back() += result.made ? "made" : "failed";
        for (std::string const& message : result.messages)
            outcomes.back() += ", " + message;
    };
    jobs.lost = [&](std::size_t, std::string const& fate) { outcomes.back() += fate; };
    run_in_workers(jobs, limits);
    EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD) << "a worker is left";
    return outcomes;
}

} // namespace

TEST(workers, lose_the_job_that_ends_one_and_go_on)
{
    WorkerLimits limits;
    limits.job.time = 2s;
    limits.job.output = 1 << 20;
    auto const fine = [] { return JobResult{true, {"a", "", "b"}}; };
    auto const failing = [] { return JobResult{false, {std::string(90'000, 'x')}}; };
    auto const killed = []() -> JobResult { raise(SIGKILL), _exit(1); };
    auto const leaving = []() -> JobResult { _exit(0); };
    auto const hungry = []() -> JobResult { throw std::bad_alloc(); };
    auto const slow = [] { return std::this_thread::sleep_for(60s), JobResult{}; };
    auto const verbose = [] { return JobResult{true, {std::string(3'000'000, 'x')}}; };
    EXPECT_THAT(run({fine, failing, killed, leaving, fine, hungry, slow, verbose, fine}, limits),
                ElementsAre("0: made, a, b", "1: failed, " + std::string(90'000, 'x'),
                            "2: crashed (signal 9)", "3: ended with status 0", "4: made, a, b",
                            "5: used more than 4 GiB", "6: took longer than 2 s", "7: gave more than 1 MiB",
                            "8: made, a, b"));
}

TEST(workers, take_turns)
{
    int done = 0;
    std::vector<char> grown;
    auto const count = [&] { return JobResult{true, {std::to_string(++done)}}; };
    auto const grow = [&] { return grown.assign(256 << 20, 'x'), count(); };
    WorkerLimits limits;
    limits.jobs = 3;
    limits.resident = 200 << 20;
    EXPECT_THAT(
        run({count, count, count, count, grow, count}, limits),
        ElementsAre("0: made, 1", "1: made, 2", "2: made, 3", "3: made, 1", "4: made, 2", "5: made, 1"));
}

} // namespace mrtool
