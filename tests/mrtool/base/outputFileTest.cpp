#include "outputFile.h"

#include "mrTest.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

TEST(outputFile, leaves_nothing_half_written_when_the_program_is_ended)
{
    TestFolder const folder;
    for (int const signal : {SIGTERM, SIGKILL}) {
        pid_t const program = fork();
        if (program == 0) {
            remove_pending_file_on_interrupt();
            (void)write_whole(folder.path("file"), [=](std::string const&) -> Result<> {
                std::raise(signal);
                return {};
            });
            _exit(1);
        }
        int status = 0;
        waitpid(program, &status, 0);
        EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
        // SIGKILL leaves no time to remove anything; files of other processes stay.
        remove_left_over(folder.path("other"), program / 10);
        EXPECT_EQ(fs::is_empty(folder.path("")), signal == SIGTERM);
        remove_left_over(folder.path("other"), program);
        EXPECT_TRUE(fs::is_empty(folder.path("")));
    }
}

} // namespace mrtool
