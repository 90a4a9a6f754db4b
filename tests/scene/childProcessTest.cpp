#include "childProcess.h"

#include "mrTest.h"

#include <cerrno>
#include <cstdlib>
#include <fcntl.h>
#include <poll.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace sandbox {

namespace {

using namespace std::chrono_literals;

ChildResult shell(std::string const& command, ChildLimits const& limits = {})
{
    return run_child({"/bin/sh", "-c", command}, limits);
}

bool none_left()
{
    return waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD;
}

void expect_none_left()
{
    EXPECT_TRUE(none_left()) << "a child is left";
}

} // namespace

TEST(childProcess, says_what_became_of_it)
{
    ChildLimits const limits;
    EXPECT_EQ(describe(shell("kill -SEGV $$"), limits), "crashed (signal 11)");
    EXPECT_EQ(describe(shell("exit 77"), limits), "used more than 2 GiB");
    EXPECT_EQ(describe(shell("echo memory allocation of 9 bytes failed >&2; kill -ABRT $$"), limits),
              "used more than 2 GiB");
}

TEST(childProcess, is_killed_at_its_limits)
{
    ChildLimits limits;
    limits.time = 200ms;
    EXPECT_EQ(describe(shell("exec sleep 60", limits), limits), "took longer than 200 ms");
    // One that closes its output and goes on.
    EXPECT_EQ(shell("exec sleep 60 >/dev/null 2>&1", limits).end, ChildEnd::out_of_time);
    limits = ChildLimits();
    limits.output = 1 << 20;
    for (char const* flood : {"cat /dev/zero", "cat /dev/zero >&2", "cat /dev/zero | tee /dev/stderr"}) {
        ChildResult const result = shell(flood, limits);
        EXPECT_EQ(describe(result, limits), "gave more than 1 MiB") << flood;
        EXPECT_LE(result.output.size(), limits.output + 1) << flood;
    }
    EXPECT_EQ(shell("head -c 1048576 /dev/zero", limits).output.size(), limits.output);
    expect_none_left();
}

TEST(childProcess, takes_its_whole_group_along_when_its_time_is_up)
{
    for (char const* command : {"exec 4<&0; sleep 60 <&4 & exec sleep 60", "exec 4<&0; sleep 60 <&4 &"}) {
        int held[2];
        ASSERT_EQ(pipe2(held, O_CLOEXEC), 0);
        ChildLimits limits;
        limits.time = 200ms;
        EXPECT_EQ(run_child({"/bin/sh", "-c", command}, limits, held[1]).end, ChildEnd::out_of_time);
        close(held[1]);
        pollfd closed{held[0], POLLIN, 0};
        EXPECT_EQ(poll(&closed, 1, 10'000), 1) << command;
        close(held[0]);
    }
    expect_none_left();
}

/// The parent has less memory than the child may write.
TEST(childProcess, is_gone_where_its_output_finds_no_room)
{
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "takes terabytes itself";
#endif
#endif
    pid_t const parent = fork();
    if (parent == 0) {
        rlimit const little{std::uint64_t{64} << 20, RLIM_INFINITY};
        setrlimit(RLIMIT_DATA, &little);
        ChildEnd const end = shell("ulimit -d unlimited; exec cat /dev/zero").end;
        _exit(end == ChildEnd::no_room && none_left() ? EXIT_SUCCESS : EXIT_FAILURE);
    }
    int status = 0;
    EXPECT_EQ(waitpid(parent, &status, 0), parent);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS) << status;
}

TEST(childProcess, has_no_more_time_because_nobody_asked)
{
    Deadline const deadline(100ms);
    EXPECT_GT(deadline.wait(), 0);
    std::this_thread::sleep_for(2500ms);
    EXPECT_EQ(deadline.wait(), 0);
}

TEST(childProcess, has_no_files_but_the_standard_ones)
{
    int const open = dup(STDIN_FILENO);
    // Beside the three, the shell's list itself.
    EXPECT_EQ(shell("cd /proc/self/fd && echo *").output, "0 1 2 3\n");
    close(open);
}

TEST(childProcess, is_given_a_limit_of_memory)
{
    std::string const limit = shell("ulimit -v").output;
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
    EXPECT_EQ(limit, "unlimited\n");
    return;
#endif
#endif
    EXPECT_EQ(limit, "2097152\n");
}

} // namespace sandbox
