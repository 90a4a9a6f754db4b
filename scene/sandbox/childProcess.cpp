#include "childProcess.h"

#include "utConcat.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <poll.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace sandbox {

namespace {

constexpr bool keeps_memory_limit()
{
#if defined(__SANITIZE_ADDRESS__)
    return false;
#elif defined(__has_feature)
    return !__has_feature(address_sanitizer);
#else
    return true;
#endif
}

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
    int const from = keep_above_standard(input >= 0 ? input : open("/dev/null", O_RDWR | O_CLOEXEC));
    int const to = keep_above_standard(output);
    int const errors = keep_above_standard(words);
    dup2(from, STDIN_FILENO);
    dup2(to, STDOUT_FILENO);
    dup2(errors, STDERR_FILENO);
    limit_memory(RLIMIT_AS, limits.memory);
    signal(SIGPIPE, SIG_DFL);
    execv(arguments[0], arguments);
    int const error = errno;
    _exit(write(STDERR_FILENO, &error, sizeof error) < 0 ? EXIT_FAILURE : exec_failed);
}

/// Collects output and last words until the child closed both.
/// @return finished, or which limit was reached before
ChildEnd collect(int output, int words, ChildLimits const& limits, Deadline& deadline, std::string& caught,
                 std::string& last_words)
{
    pollfd both[] = {{output, POLLIN, 0}, {words, POLLIN, 0}};
    std::string* const texts[] = {&caught, &last_words};
    while (both[0].fd >= 0 || both[1].fd >= 0) {
        int const wait = deadline.wait();
        if (wait == 0)
            return ChildEnd::out_of_time;
        if (poll(both, 2, wait) <= 0)
            continue;
        for (int which : {0, 1})
            if (both[which].fd >= 0 && both[which].revents != 0 && !drain(both[which].fd, *texts[which]))
                both[which].fd = -1;
        if (caught.size() > limits.output)
            return ChildEnd::too_much_output;
        if (last_words.size() > last_words_kept)
            last_words.erase(0, last_words.size() - last_words_kept);
    }
    return ChildEnd::finished;
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

    Deadline deadline(limits.time);
    pid_t const parent = getpid();
    pid_t const child = output.open && words.open ? fork() : -1;
    if (child < 0) {
        result.code = errno;
        return result;
    }
    if (child == 0)
        become(pointers.data(), limits, parent, input, output.ends[1], words.ends[1]);
    output.close_end(1);
    words.close_end(1);

    std::string last_words;
    result.end = collect(output.ends[0], words.ends[0], limits, deadline, result.output, last_words);
    int status = 0;
    if (result.end == ChildEnd::finished && ended(child, deadline, status)) {
        judge(status, last_words, result);
        return result;
    }
    if (result.end == ChildEnd::finished)
        result.end = ChildEnd::out_of_time;
    kill_child(child);
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
    case ChildEnd::not_started:
        break;
    }
    return std::string("could not be done in a process of its own: ") + std::strerror(result.code);
}

bool drain(int file, std::string& into)
{
    char chunk[1 << 16];
    ssize_t const got = read(file, chunk, sizeof chunk);
    if (got < 0)
        return errno == EINTR || errno == EAGAIN;
    into.append(chunk, static_cast<std::size_t>(got));
    return got > 0;
}

int Deadline::wait()
{
    using std::chrono::milliseconds;
    constexpr milliseconds longest(1000);
    auto const now = Clock::now();
    // So long between two questions, though told to wait less: this process was stopped.
    if (now - m_asked > 2 * longest)
        m_end += now - m_asked;
    m_asked = now;
    auto const left = std::chrono::ceil<milliseconds>(m_end - now);
    return static_cast<int>(std::clamp(left, milliseconds(0), longest).count());
}

bool ended(pid_t child, Deadline& deadline, int& status)
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
    if (keeps_memory_limit())
        limit(resource, bytes);
}

} // namespace sandbox
