#include "confined.h"

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <malloc.h>

#include <cstdio>
#include <cstdlib>
#include <fstream>

namespace {

constexpr std::int64_t mebibyte = std::int64_t{1} << 20;

/// A figure of the process that the system gives in KiB, in bytes.
std::int64_t process_bytes(std::string const& figure)
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;)
        if (word == figure) {
            std::int64_t kibibytes = 0;
            status >> kibibytes;
            return kibibytes * 1024;
        }
    return 0;
}

std::int64_t memory_allowed(Hostile const& input)
{
    return 64 * mebibyte + 40 * input.bytes + 4 * input.pixels;
}

std::int64_t seconds_allowed(Hostile const& input)
{
    std::int64_t const seconds = 2 + input.bytes / (2 * mebibyte) + input.pixels / (32 * mebibyte);
    return sanitized ? 10 * seconds : seconds;
}

void limit(int resource, std::int64_t most)
{
    rlimit const both{static_cast<rlim_t>(most), static_cast<rlim_t>(most)};
    setrlimit(static_cast<__rlimit_resource_t>(resource), &both);
}

[[noreturn]] void be_child(Hostile const& input, std::function<std::string()> const& work, int result)
{
    std::int64_t const resident = process_bytes("VmRSS:");
    if (!sanitized)
        limit(RLIMIT_AS, process_bytes("VmSize:") + memory_allowed(input));
    limit(RLIMIT_CPU, seconds_allowed(input));
    limit(RLIMIT_CORE, 0);

    std::string const outcome = work();
    std::string const report =
        std::to_string((process_bytes("VmHWM:") - resident) / mebibyte) + ' ' + outcome;
    bool const told = write(result, report.data(), report.size()) == static_cast<ssize_t>(report.size());
    std::exit(told ? 0 : 1); // through the leak check
}

std::string all_of(int pipe)
{
    std::string text;
    char part[4096];
    for (ssize_t count; (count = read(pipe, part, sizeof part)) > 0;)
        text.append(part, static_cast<std::size_t>(count));
    return text;
}

void print_row(Hostile const& input, std::string const& outcome, rusage const& use, std::string const& peak)
{
    auto const seconds = [](timeval const& time) {
        return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) * 1e-6;
    };
    std::printf("| %s | %lld | %s | %.2f | %s | %lld |\n", input.title.c_str(),
                static_cast<long long>(input.bytes), outcome.c_str(),
                seconds(use.ru_utime) + seconds(use.ru_stime), peak.c_str(),
                static_cast<long long>(memory_allowed(input) / mebibyte));
}

} // namespace

std::string confined(Hostile const& input, std::function<std::string()> const& work)
{
    malloc_trim(0); // what the input was made in is not to serve the reader
    std::fflush(nullptr);
    int pipes[2];
    if (pipe(pipes) != 0)
        return "no pipe";
    pid_t const child = fork();
    if (child == 0)
        be_child(input, work, pipes[1]);
    close(pipes[1]);
    std::string const report = all_of(pipes[0]);
    close(pipes[0]);
    int status = 0;
    rusage use{};
    if (wait4(child, &status, 0, &use) != child)
        return "no child";

    std::size_t const blank = report.find(' ');
    std::string outcome = blank == std::string::npos ? "nothing" : report.substr(blank + 1);
    if (WIFSIGNALED(status))
        outcome = "signal " + std::to_string(WTERMSIG(status));
    else if (WEXITSTATUS(status) != 0)
        outcome = "status " + std::to_string(WEXITSTATUS(status));
    print_row(input, outcome, use, report.substr(0, blank));
    return outcome;
}
