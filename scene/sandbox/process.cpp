#include "process.h"

#include <algorithm>
#include <cerrno>
#include <csignal>
#include <cstdlib>
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

} // namespace

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
