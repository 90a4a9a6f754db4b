#include "outputFile.h"

#include "gxReplacement.h"
#include "mrTest.h"

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

std::ptrdiff_t count_files(TestFolder const& folder)
{
    return std::distance(fs::directory_iterator(folder.path("")), fs::directory_iterator());
}

/// Ends a process by a signal while it writes a file.
void end_writing(TestFolder const& folder, std::string const& name, int signal)
{
    pid_t const program = fork();
    if (program == 0) {
        remove_pending_file_on_interrupt();
        (void)write_file(folder.path(name), [=](std::FILE*) {
            std::raise(signal);
            return true;
        });
        _exit(1);
    }
    int status = 0;
    waitpid(program, &status, 0);
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == signal);
}

} // namespace

TEST(outputFile, leaves_nothing_half_written_when_the_program_is_ended)
{
    TestFolder const folder;
    for (int const signal : {SIGTERM, SIGQUIT}) {
        end_writing(folder, "file", signal);
        EXPECT_EQ(count_files(folder), 0);
    }
    // This leaves no time to remove anything. The next run does it, but not what another one is writing.
    end_writing(folder, "file", SIGKILL);
    gxReplacement const held(utString(folder.path("held")), gxReplacement::NewFile::beside);
    EXPECT_EQ(count_files(folder), 2);
    EXPECT_TRUE(write_bytes(folder.path("other file"), "bytes"));
    EXPECT_EQ(count_files(folder), 2);
    EXPECT_TRUE(fs::exists(held.temporary()));
}

TEST(outputFile, writes_through_links_and_keeps_what_is_read_only)
{
    TestFolder const folder;
    fs::create_symlink("file", folder.path("link"));
    ::write_bytes(folder.path("file"), "older");
    EXPECT_TRUE(write_bytes(folder.path("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder.path("link")));
    EXPECT_EQ(read_bytes(folder.path("file")), "new");

    fs::permissions(folder.path("file"), fs::perms::owner_read);
    Result<> const refused = write_bytes(folder.path("link"), "newer");
    ASSERT_FALSE(refused);
    EXPECT_EQ(refused.error().words, folder.path("link") + " cannot be written: it is read-only");
    EXPECT_FALSE(write_bytes(folder.path(""), "newer"));
    EXPECT_EQ(read_bytes(folder.path("file")), "new");
}

} // namespace mrtool
