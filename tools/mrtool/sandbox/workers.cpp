#include "workers.h"

#include "process.h"
#include "wire.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <new>
#include <poll.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <unistd.h>
#include <utility>

namespace mrtool {

using namespace sandbox;

template <class Wire>
void exchange(Wire& wire, JobResult& result)
{
    wire(result.made);
    wire(result.messages);
}

namespace {

using Work = std::function<JobResult(std::size_t)>;

// What a worker has to remove its temporary file when it is asked to end.
constexpr std::chrono::seconds grace{2};

std::atomic<bool> memory_ran_out = false;

void note_lack_of_memory()
{
    memory_ran_out = true;
    throw std::bad_alloc();
}

JobResult worked(Work const& work, std::size_t number)
{
    JobResult result;
    try {
        result = work(number);
    } catch (std::bad_alloc const&) {
        _exit(child_out_of_memory);
    }
    // Also where the lack was met on the way, and taken for a fault of the file.
    if (!result.made && memory_ran_out)
        _exit(child_out_of_memory);
    return result;
}

bool receive_number(int socket, std::size_t& number)
{
    ssize_t got = 0;
    do
        got = recv(socket, &number, sizeof number, MSG_WAITALL);
    while (got < 0 && errno == EINTR);
    return got == sizeof number;
}

/// The worker: answers each number with the job's result, until there are no more.
[[noreturn]] void serve(Work const& work, int socket, std::uint64_t memory) noexcept
{
    limit_memory(RLIMIT_DATA, memory);
    std::set_new_handler(note_lack_of_memory);
    std::size_t number = 0;
    while (receive_number(socket, number)) {
        JobResult result = worked(work, number);
        WireWriter wire(socket);
        wire(result);
        if (!wire.finish())
            break;
    }
    // Nothing is torn down that the end of a process does not free by itself.
    _exit(EXIT_SUCCESS);
}

/// A worker as the program sees it.
class Worker
{
public:
    Worker(Work const& work, WorkerLimits const& limits) : m_limits(limits)
    {
        int ends[2];
        if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends) != 0) {
            m_error = errno;
            return;
        }
        pid_t const parent = getpid();
        m_process = fork();
        m_error = errno;
        if (m_process == 0) {
            die_with(parent, SIGTERM);
            close(ends[0]);
            serve(work, ends[1], limits.job.memory);
        }
        close(ends[1]);
        m_socket = ends[0];
    }

    ~Worker()
    {
        if (m_socket >= 0)
            close(m_socket);
        int status = 0;
        Deadline deadline(grace);
        if (m_process > 0 && !ended(m_process, deadline, status))
            kill_child(m_process);
    }

    Worker(Worker const&) = delete;
    Worker& operator=(Worker const&) = delete;

    /// Has it do a job, and waits for it.
    /// @param fate  receives what became of it when it did not do the job; it does no more then
    bool do_job(std::size_t number, JobResult& result, std::string& fate)
    {
        ChildResult lost;
        lost.code = m_error;
        ++m_jobs;
        if (m_process > 0) {
            if (receive(number, result, lost))
                return true;
            bury(lost);
        }
        fate = describe(lost, m_limits.job);
        return false;
    }

    /// The process that did not do its job; -1 while there is none.
    pid_t buried() const { return m_buried; }

    bool worn_out() const { return m_jobs >= m_limits.jobs || resident() >= m_limits.resident; }

private:
    /// @param lost  receives the limit that was reached, or "finished" where the worker ended by itself
    bool receive(std::size_t number, JobResult& result, ChildResult& lost) const
    {
        Deadline deadline(m_limits.job.time);
        // Where nobody takes the number any more, the end is seen below.
        send(m_socket, &number, sizeof number, MSG_NOSIGNAL);
        std::string answer;
        for (;;) {
            int const wait = deadline.wait();
            pollfd socket{m_socket, POLLIN, 0};
            lost.end = wait == 0                             ? ChildEnd::out_of_time
                       : answer.size() > m_limits.job.output ? ChildEnd::too_much_output
                                                             : ChildEnd::finished;
            if (lost.end != ChildEnd::finished)
                return false;
            if (poll(&socket, 1, wait) <= 0)
                continue;
            if (!drain(m_socket, answer))
                return false;
            JobResult received;
            WireReader wire(answer);
            wire(received);
            if (wire.complete()) {
                result = std::move(received);
                return true;
            }
        }
    }

    /// Waits for the end of a worker that is lost, or brings it about.
    void bury(ChildResult& lost)
    {
        bool const by_itself = lost.end == ChildEnd::finished;
        if (!by_itself)
            kill(m_process, SIGTERM);
        int status = 0;
        Deadline deadline(grace);
        if (!ended(m_process, deadline, status))
            status = kill_child(m_process);
        if (by_itself)
            judge(status, {}, lost);
        m_buried = std::exchange(m_process, -1);
    }

    std::uint64_t resident() const
    {
        std::uint64_t whole = 0;
        std::uint64_t pages = 0;
        std::ifstream("/proc/" + std::to_string(m_process) + "/statm") >> whole >> pages;
        return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    }

    WorkerLimits const& m_limits;
    pid_t m_process = -1;
    pid_t m_buried = -1;
    int m_socket = -1;
    int m_error = 0;
    int m_jobs = 0;
};

} // namespace

void run_in_workers(Jobs const& jobs, WorkerLimits const& limits)
{
    std::unique_ptr<Worker> worker;
    for (std::size_t number = 0; number < jobs.count; ++number) {
        jobs.begun(number);
        if (!worker)
            worker = std::make_unique<Worker>(jobs.work, limits);
        JobResult result;
        std::string fate;
        bool const answered = worker->do_job(number, result, fate);
        if (answered)
            jobs.done(number, result);
        else
            jobs.lost(number, worker->buried(), fate);
        if (!answered || worker->worn_out())
            worker.reset();
    }
}

} // namespace mrtool
