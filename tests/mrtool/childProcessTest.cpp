#include "childProcess.h"

#include "mrTest.h"

#include <cerrno>
#include <csignal>
#include <fstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace mrtool {

namespace {

using namespace std::chrono_literals;

ChildResult shell(std::string const& command, ChildLimits const& limits = {})
{
    return run_child({"/bin/sh", "-c", command}, limits);
}

/// Gone, or dead and waiting for whoever it was left to.
bool is_dead(std::string const& process)
{
    std::ifstream stat("/proc/" + process + "/stat");
    std::string number, name, state;
    return !(stat >> number >> name >> state) || state == "Z";
}

} // namespace

TEST(childProcess, gives_output_and_status)
{
    ChildResult const result = shell("head -c 300000 /dev/zero; echo not shown >&2; exit 3");
    EXPECT_EQ(result.end, ChildEnd::finished);
    EXPECT_EQ(result.code, 3);
    EXPECT_EQ(result.output, std::string(300000, '\0'));
    EXPECT_EQ(shell("cat").output, "");
}

TEST(childProcess, says_what_became_of_it)
{
    ChildLimits const limits;
    EXPECT_EQ(describe(shell("kill -SEGV $$"), limits), "crashed (signal 11)");
    EXPECT_EQ(describe(shell("exit 77"), limits), "used more than 2 GiB");
    EXPECT_EQ(describe(shell("echo memory allocation of 9 bytes failed >&2; kill -ABRT $$"), limits),
              "used more than 2 GiB");
    EXPECT_EQ(describe(run_child({"/no/such/program"}, limits), limits), "ended with status 127");
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
    EXPECT_EQ(describe(shell("cat /dev/zero", limits), limits), "gave more than 1 MiB");
    EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD) << "a child is left";
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

TEST(childProcess, ends_with_its_parent)
{
    TestFolder const folder;
    std::string const note = folder.path("process");
    pid_t const parent = fork();
    if (parent == 0) {
        shell("echo $$ >" + note + ".new; mv " + note + ".new " + note + "; exec sleep 60");
        _exit(0);
    }
    while (!std::filesystem::exists(note))
        std::this_thread::sleep_for(1ms);
    std::string process = read_bytes(note);
    process.pop_back();
    EXPECT_FALSE(is_dead(process));
    kill(parent, SIGKILL);
    waitpid(parent, nullptr, 0);
    for (int wait = 0; wait < 5000 && !is_dead(process); ++wait)
        std::this_thread::sleep_for(1ms);
    EXPECT_TRUE(is_dead(process));
}

} // namespace mrtool
