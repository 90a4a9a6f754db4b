#include "childProcess.h"

#include "utConcat.h"

#include <algorithm>
#include <cerrno>
#include <climits>
#include <csignal>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <linux/close_range.h>
#include <new>
#include <poll.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace sandbox {

namespace {

void limit(int resource, rlim_t most)
{
    auto const which = static_cast<__rlimit_resource>(resource);
    rlimit both{most, most};
    // A lower limit that is there already stays.
    if (rlimit now; getrlimit(which, &now) == 0)
        both = {std::min(now.rlim_cur, most), std::min(now.rlim_max, most)};
    setrlimit(which, &both);
}

constexpr std::size_t last_words_kept = 4096;

/// Both ends of a pipe, closed at the end.
struct Pipe
{
    Pipe() { open = pipe2(ends, O_CLOEXEC) == 0; }
    ~Pipe()
    {
        close_end(0);
        close_end(1);
    }
    Pipe(Pipe const&) = delete;
    Pipe& operator=(Pipe const&) = delete;

    void close_end(int which)
    {
        if (ends[which] >= 0)
            close(ends[which]);
        ends[which] = -1;
    }

    int ends[2] = {-1, -1};
    bool open = false;
};

/// The status of a child in which no program could be started. It writes why, an errno, to standard error.
constexpr int exec_failed = 127;

/// A copy of a file out of the way of the standard ones, which may be closed in the parent.
int keep_above_standard(int file)
{
    return fcntl(file, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
}

/// Between fork and exec: only calls that are safe there, since a renderer's threads may be around.
[[noreturn]] void become(char* const* arguments, ChildLimits const& limits, pid_t parent, int input,
                         int output, int words)
{
    die_with(parent, SIGKILL);
    setpgid(0, 0);
    int const from = keep_above_standard(input >= 0 ? input : open("/dev/null", O_RDWR | O_CLOEXEC));
    int const to = keep_above_standard(output);
    int const errors = keep_above_standard(words);
    dup2(from, STDIN_FILENO);
    dup2(to, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    // What this process got from its own parent is not the child's either.
    syscall(SYS_close_range, STDERR_FILENO + 1, ~0U, CLOSE_RANGE_CLOEXEC);
    limit_memory(RLIMIT_AS, limits.memory);
    signal(SIGPIPE, SIG_DFL);
    execv(arguments[0], arguments);
    int const error = errno;
    _exit(write(STDERR_FILENO, &error, sizeof error) < 0 ? EXIT_FAILURE : exec_failed);
}

/// Collects what a child writes.
class Collector
{
public:
    Collector(int output, int words, ChildLimits const& limits, ChildResult& result)
        : m_files{{output, POLLIN, 0}, {words, POLLIN, 0}}, m_left(limits.output), m_result(result)
    {}

    /// Goes on until the child closed both files.
    /// @return finished, or which limit was reached before
    ChildEnd collect(Deadline const& deadline)
    {
        // When the time is over: once for what the pipe holds, once for its end.
        int last_looks = 2;
        while (m_files[0].fd >= 0 || m_files[1].fd >= 0) {
            int const wait = deadline.wait();
            if (wait == 0 && last_looks-- == 0)
                return ChildEnd::out_of_time;
            if (poll(m_files, 2, wait) <= 0)
                continue;
            if (!take(m_files[0], m_result.output) || !take(m_files[1], m_last_words))
                return ChildEnd::too_much_output;
            if (m_last_words.size() > last_words_kept)
                m_last_words.erase(0, m_last_words.size() - last_words_kept);
        }
        return ChildEnd::finished;
    }

    std::string const& last_words() const { return m_last_words; }

private:
    /// @return false when more came than may; one byte of it is taken
    bool take(pollfd& file, std::string& into)
    {
        if (file.fd < 0 || file.revents == 0)
            return true;
        std::size_t const before = into.size();
        if (!drain(file.fd, into,
                   static_cast<std::size_t>(std::min<std::uint64_t>(m_left, SIZE_MAX - 1)) + 1))
            file.fd = -1;
        std::size_t const taken = into.size() - before;
        bool const fits = taken <= m_left;
        m_left -= fits ? taken : m_left;
        return fits;
    }

    pollfd m_files[2];
    std::uint64_t m_left; ///< bytes that the child may still write
    ChildResult& m_result;
    std::string m_last_words;
};

/// A child that is gone at the end of this object's life, whatever happens until then.
struct RunningChild
{
    pid_t process;

    ~RunningChild()
    {
        if (process > 0)
            kill_child(process);
    }
};

/// Waits for a child's end or its limits.
void wait_for(RunningChild& child, Collector& collector, Deadline const& deadline, ChildResult& result)
{
    try {
        result.end = collector.collect(deadline);
    } catch (std::bad_alloc const&) {
        result.end = ChildEnd::no_room;
    }
    if (result.end != ChildEnd::finished)
        return;
    result.end = ChildEnd::out_of_time;
    int status = 0;
    if (!ended(child.process, deadline, status))
        return;
    child.process = -1;
    judge(status, collector.last_words(), result);
}

/// Some loaders end the process when an allocation fails. They say so first, in these words (the run-time
/// library of an SVG reader, and the one underneath the image loader).
bool speaks_of_memory(std::string_view words)
{
    return words.find("memory allocation of ") != words.npos ||
           words.find("failed to allocate ") != words.npos;
}

} // namespace

void judge(int status, std::string const& last_words, ChildResult& result)
{
    if (!WIFEXITED(status)) {
        result.code = WTERMSIG(status);
        bool const gave_up = result.code == SIGABRT || result.code == SIGTRAP;
        result.end = gave_up && speaks_of_memory(last_words) ? ChildEnd::out_of_memory : ChildEnd::crashed;
        return;
    }
    result.code = WEXITSTATUS(status);
    result.end = result.code == child_out_of_memory ? ChildEnd::out_of_memory : ChildEnd::finished;
    if (result.code == exec_failed && last_words.size() == sizeof result.code) {
        std::memcpy(&result.code, last_words.data(), sizeof result.code);
        result.end = ChildEnd::not_started;
    }
}

ChildResult run_child(std::vector<std::string> const& arguments, ChildLimits const& limits, int input)
{
    ChildResult result;
    Pipe output, words;
    std::vector<char*> pointers;
    for (std::string const& argument : arguments)
        pointers.push_back(const_cast<char*>(argument.c_str())); // exec's signature; it changes nothing
    pointers.push_back(nullptr);

    Deadline const deadline(limits.time);
    pid_t const parent = getpid();
    pid_t const child = output.open && words.open ? fork() : -1;
    if (child < 0) {
        result.code = errno;
        return result;
    }
    if (child == 0)
        become(pointers.data(), limits, parent, input, output.ends[1], words.ends[1]);
    RunningChild running{child};
    setpgid(child, child); // the child's own call may come later, or fail when this one came first
    output.close_end(1);
    words.close_end(1);

    Collector collector(output.ends[0], words.ends[0], limits, result);
    wait_for(running, collector, deadline, result);
    return result;
}

std::string describe(ChildResult const& result, ChildLimits const& limits)
{
    auto const size = [](std::uint64_t bytes) {
        std::uint64_t const whole = bytes >> 30;
        return whole > 0 ? ut_concat(whole, " GiB") : ut_concat(bytes >> 20, " MiB");
    };
    auto const seconds = [](std::chrono::milliseconds time) {
        return time.count() % 1000 == 0 ? ut_concat(time.count() / 1000, " s")
                                        : ut_concat(time.count(), " ms");
    };
    switch (result.end) {
    case ChildEnd::finished:
        return ut_concat("ended with status ", result.code);
    case ChildEnd::crashed:
        return ut_concat("crashed (signal ", result.code, ")");
    case ChildEnd::out_of_time:
        return "took longer than " + seconds(limits.time);
    case ChildEnd::out_of_memory:
        return "used more than " + size(limits.memory);
    case ChildEnd::too_much_output:
        return "gave more than " + size(limits.output);
    case ChildEnd::no_room:
        return "gave more than there is memory for";
    case ChildEnd::not_started:
        break;
    }
    return std::string("could not be done in a process of its own: ") + std::strerror(result.code);
}

bool drain(int file, std::string& into, std::size_t most)
{
    char chunk[1 << 16];
    ssize_t const got = read(file, chunk, std::min(most, sizeof chunk));
    if (got < 0)
        return errno == EINTR || errno == EAGAIN;
    into.append(chunk, static_cast<std::size_t>(got));
    return got > 0;
}

int Deadline::wait() const
{
    using std::chrono::milliseconds;
    auto const left = std::chrono::ceil<milliseconds>(m_end - Clock::now());
    return static_cast<int>(std::clamp(left, milliseconds(0), milliseconds(INT_MAX)).count());
}

bool ended(pid_t child, Deadline const& deadline, int& status)
{
    for (;;) {
        pid_t const done = waitpid(child, &status, WNOHANG);
        if (done == child || (done < 0 && errno != EINTR))
            return true;
        if (deadline.wait() == 0)
            return false;
        std::this_thread::sleep_for(std::chrono::microseconds(200));
    }
}

int kill_child(pid_t child)
{
    kill(-child, SIGKILL);
    kill(child, SIGKILL);
    int status = 0;
    while (waitpid(child, &status, 0) < 0 && errno == EINTR)
        ;
    return status;
}

void die_with(pid_t parent, int signal)
{
    prctl(PR_SET_PDEATHSIG, signal);
    if (getppid() != parent)
        _exit(EXIT_FAILURE);
}

void limit_memory(int resource, std::uint64_t bytes)
{
    limit(RLIMIT_CORE, 0);
    if (!under_address_sanitizer())
        limit(resource, bytes);
}

} // namespace sandbox
