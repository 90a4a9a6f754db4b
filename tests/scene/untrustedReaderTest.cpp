#include "untrustedReader.h"

#include "mrTest.h"

#include <cerrno>
#include <sys/wait.h>

namespace mrtool {

TEST(UntrustedReader, believes_no_child)
{
    std::string reason;
    Meshes meshes;
    // A child that answers with its arguments instead of meshes.
    EXPECT_FALSE(UntrustedReader("/bin/echo").meshes("a.stl", meshes, reason));
    EXPECT_EQ(reason, "reading it gave no sensible answer");
    EXPECT_TRUE(meshes.blocks.empty());
    EXPECT_FALSE(UntrustedReader("/bin/false").meshes("a.stl", meshes, reason));
    EXPECT_EQ(reason, "reading it ended with status 1");
    ChildLimits limits;
    limits.time = std::chrono::milliseconds(1);
    EXPECT_FALSE(UntrustedReader(MRTOOL, limits).meshes("a.stl", meshes, reason));
    EXPECT_EQ(reason, "reading it took longer than 1 ms");
    EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD);
}

} // namespace mrtool
