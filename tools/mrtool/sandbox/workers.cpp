#include "workers.h"

#include "fault.h"

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

namespace mrtool {

using namespace sandbox;

namespace {

using Work = std::function<JobResult(std::size_t)>;

/// How long a worker may take to remove its temporary file after SIGTERM.
constexpr std::chrono::seconds grace{2};

// ---- In the worker

std::atomic<bool> memory_ran_out = false;

void note_lack_of_memory()
{
    memory_ran_out = true;
    throw std::bad_alloc();
}

JobResult do_work(Work const& work, std::size_t number)
{
    JobResult result;
    try {
        result = work(number);
    } catch (std::bad_alloc const&) {
        _exit(child_out_of_memory);
    }
    // A reader may have taken the lack of memory for a fault of the file.
    if (!result.made && memory_ran_out)
        _exit(child_out_of_memory);
    return result;
}

/// An answer consists of texts with a NUL behind each: "1" or "0" for whether the job was made, the messages, and an
/// empty text at the end.
std::string pack(JobResult const& result)
{
    std::string answer = result.made ? "1" : "0";
    for (std::string const& message : result.messages)
        if (message[0] != '\0')
            answer.append(1, '\0').append(message.c_str());
    return answer.append(2, '\0');
}

/// Answers each number with the job's result until the program closes the socket.
[[noreturn]] void serve(Work const& work, int socket, std::uint64_t memory) noexcept
{
    limit_memory(RLIMIT_DATA, memory);
    std::set_new_handler(note_lack_of_memory);
    std::size_t number = 0;
    while (recv(socket, &number, sizeof number, MSG_WAITALL) == sizeof number) {
        std::string const answer = pack(do_work(work, number));
        if (send(socket, answer.data(), answer.size(), MSG_NOSIGNAL) != std::ssize(answer))
            break;
    }
    // Skips destructors: the end of the process frees everything.
    _exit(EXIT_SUCCESS);
}

// ---- In the program

bool is_complete(std::string_view answer)
{
    return answer.ends_with(std::string_view("\0\0", 2));
}

/// @param answer  a complete one
JobResult unpack(std::string_view answer)
{
    JobResult result{answer.front() == '1', {}};
    for (std::size_t at = answer.find('\0') + 1; answer[at] != '\0'; at = answer.find('\0', at) + 1)
        result.messages.emplace_back(answer.data() + at);
    return result;
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
            setpgid(0, 0);
            close(ends[0]);
            serve(work, ends[1], limits.job.memory);
        }
        if (m_process > 0)
            setpgid(m_process, m_process); // whichever of the two comes first
        close(ends[1]);
        m_socket = ends[0];
    }

    ~Worker()
    {
        if (m_socket >= 0)
            close(m_socket);
        if (m_process > 0)
            wait_for_end();
    }

    Worker(Worker const&) = delete;
    Worker& operator=(Worker const&) = delete;

    /// Has the worker do a job, and waits for it.
    /// @return the result, or how the worker ended; it does no more jobs then
    Result<JobResult> do_job(std::size_t number)
    {
        ChildResult end;
        end.code = m_error;
        ++m_jobs;
        if (m_process > 0) {
            std::string answer;
            end.end = receive(number, answer);
            if (end.end == ChildEnd::finished && is_complete(answer))
                return unpack(answer);
            if (end.end != ChildEnd::finished)
                kill(m_process, SIGTERM);
            int const status = wait_for_end();
            if (end.end == ChildEnd::finished)
                judge(status, {}, end);
            m_process = -1;
        }
        return fail(describe(end, m_limits.job));
    }

    bool is_worn_out() const { return m_jobs >= m_limits.jobs || read_resident() >= m_limits.resident; }

private:
    /// Sends the number and receives the answer.
    /// @return which limit was exceeded; "finished" when the answer is complete or the worker ended
    ChildEnd receive(std::size_t number, std::string& answer) const
    {
        Deadline const deadline(m_limits.job.time);
        // If the worker has ended already, this fails and poll() says so.
        send(m_socket, &number, sizeof number, MSG_NOSIGNAL);
        while (!is_complete(answer)) {
            int const wait = deadline.wait();
            pollfd socket{m_socket, POLLIN, 0};
            if (poll(&socket, 1, wait) > 0 &&
                !drain(m_socket, answer, m_limits.job.output + 1 - answer.size()))
                break;
            if (answer.size() > m_limits.job.output)
                return ChildEnd::too_much_output;
            if (wait == 0 && !is_complete(answer))
                return ChildEnd::out_of_time;
        }
        return ChildEnd::finished;
    }

    /// Waits for the end of the process, and kills it when that takes too long.
    /// @return what waitpid() tells
    int wait_for_end() const
    {
        int status = 0;
        Deadline const deadline(grace);
        return ended(m_process, deadline, status) ? status : kill_child(m_process);
    }

    /// Bytes of memory that the worker has in use.
    std::uint64_t read_resident() const
    {
        std::uint64_t whole = 0, pages = 0;
        std::ifstream("/proc/" + std::to_string(m_process) + "/statm") >> whole >> pages;
        return pages * static_cast<std::uint64_t>(sysconf(_SC_PAGESIZE));
    }

    WorkerLimits const& m_limits;
    pid_t m_process = -1;
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
        Result<JobResult> const result = worker->do_job(number);
        if (result)
            jobs.done(number, *result);
        else
            jobs.lost(number, result.error().words);
        if (!result || worker->is_worn_out())
            worker.reset();
    }
}

} // namespace mrtool
