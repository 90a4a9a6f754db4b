#include "pendingFile.h"

#include "mrTest.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

TEST(PendingFile, does_not_outlive_its_program)
{
    TestFolder const folder;
    for (int const signal : {SIGTERM, SIGKILL}) {
        pid_t const program = fork();
        if (program == 0) {
            remove_pending_files_on_interrupt();
            PendingFile const pending(folder.path("file"));
            std::raise(pending.good() ? signal : SIGABRT);
        }
        int status = 0;
        waitpid(program, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        // The one signal leaves no time to remove anything; another program's files stay.
        remove_left_over(folder.path("other"), program / 10);
        EXPECT_EQ(fs::is_empty(folder.path("")), signal == SIGTERM);
        remove_left_over(folder.path("other"), program);
        EXPECT_TRUE(fs::is_empty(folder.path("")));
    }
}

} // namespace mrtool
