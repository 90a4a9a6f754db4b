#include "childProcess.h"

#include "mrTest.h"

#include <cerrno>
#include <sys/wait.h>

namespace sandbox {

namespace {

using namespace std::chrono_literals;

ChildResult shell(std::string const& command, ChildLimits const& limits = {})
{
    return run_child({"/bin/sh", "-c", command}, limits);
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

} // namespace sandbox
