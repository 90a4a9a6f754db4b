#include "gxReplacement.h"

#include "mrTest.h"

#include <csignal>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

using NewFile = gxReplacement::NewFile;

class gxReplacementTest : public testing::Test
{
protected:
    std::string path(std::string const& name = {}) const { return folder.path(name); }

    /// @return how many files there are
    std::ptrdiff_t write(std::string const& name, bool finished, NewFile new_file = NewFile::in_place) const
    {
        gxReplacement out(utString(path(name)), new_file);
        EXPECT_EQ(out.error(), 0);
        std::fputs("new", out.file());
        std::fflush(out.file());
        std::ptrdiff_t const files = count();
        if (finished) {
            EXPECT_EQ(out.finish(), 0);
        }
        return files;
    }

    std::ptrdiff_t count() const
    {
        return std::distance(fs::directory_iterator(path()), fs::directory_iterator());
    }

    /// A process that is stopped or killed while it writes.
    pid_t be_writing(std::string const& name, int signal) const
    {
        pid_t const process = fork();
        if (process == 0) {
            gxReplacement const out(utString(path(name)), NewFile::beside);
            std::raise(signal);
            _exit(1);
        }
        waitpid(process, nullptr, WUNTRACED);
        return process;
    }

    TestFolder const folder;
};

} // namespace

TEST_F(gxReplacementTest, LeavesTheOlderFileWholeUntilItIsComplete)
{
    fs::create_directory(path("sub"));
    fs::create_symlink("sub/file", path("first"));
    fs::create_symlink(path("first"), path("link"));
    for (NewFile const new_file : {NewFile::in_place, NewFile::beside})
        for (bool const finished : {false, true}) {
            write_bytes(path("sub/file"), "older");
            chmod(path("sub/file").c_str(), 0604);
            if (geteuid() == 0) {
                ASSERT_EQ(chown(path("sub/file").c_str(), 1, 2), 0);
            }
            write("link", finished, new_file);
            EXPECT_EQ(read_bytes(path("sub/file")), finished ? "new" : "older");
            EXPECT_TRUE(fs::is_symlink(path("link")) && fs::is_symlink(path("first")));
            struct stat status = {};
            stat(path("link").c_str(), &status);
            EXPECT_EQ(status.st_mode & 07777, 0604u);
            EXPECT_EQ(status.st_uid + status.st_gid, geteuid() == 0 ? 3u : geteuid() + getegid());
            EXPECT_EQ(std::distance(fs::directory_iterator(path("sub")), fs::directory_iterator()), 1);
        }
}

TEST_F(gxReplacementTest, MakesANewFileInPlaceOrBeside)
{
    fs::create_symlink("file", path("link"));
    for (NewFile const new_file : {NewFile::in_place, NewFile::beside})
        for (bool const finished : {false, true}) {
            fs::remove(path("file"));
            EXPECT_EQ(write("link", finished, new_file), 2);
            EXPECT_EQ(fs::exists(path("file")), finished || new_file == NewFile::in_place);
            EXPECT_EQ(count(), fs::exists(path("file")) ? 2 : 1);
        }
}

TEST_F(gxReplacementTest, WritesInPlaceWhatCannotBeReplaced)
{
    write_bytes(path("file"), "older");
    chmod(path("file").c_str(), 0666);
    int const nameless = open(path("nameless").c_str(), O_RDWR | O_CREAT, 0600);
    fs::remove(path("nameless"));
    fs::create_symlink("/proc/self/fd/" + std::to_string(nameless), path("link"));
    write("link", false);
    struct stat status = {};
    fstat(nameless, &status);
    EXPECT_EQ(status.st_size, 3);
    close(nameless);

    ASSERT_EQ(mkfifo(path("pipe").c_str(), 0600), 0);
    int const pipe = open(path("pipe").c_str(), O_RDONLY | O_NONBLOCK);
    write("pipe", true);
    char bytes[9];
    EXPECT_EQ(read(pipe, bytes, sizeof bytes), 3);
    close(pipe);

    // What root may do anywhere, others may not.
    chmod(path().c_str(), 0555);
    uid_t const user = geteuid();
    ASSERT_EQ(seteuid(user == 0 ? 65534 : user), 0);
    write("file", false);
    EXPECT_EQ(gxReplacement(utString(path("other")), NewFile::beside).error(), EACCES);
    ASSERT_EQ(seteuid(user), 0);
    chmod(path().c_str(), 0755);
    EXPECT_EQ(read_bytes(path("file")), "new");
    EXPECT_EQ(count(), 3);
}

TEST_F(gxReplacementTest, RemovesTemporaryFilesThatNobodyHolds)
{
    write_bytes(path(".mr-mine.tmp"), "mine");
    pid_t const held = be_writing("a", SIGSTOP);
    be_writing("a", SIGKILL);
    be_writing("b", SIGKILL);
    EXPECT_EQ(count(), 4);
    write("a", true, NewFile::beside);
    EXPECT_EQ(count(), 4) << "its own became the file, the one left behind is gone";
    gxReplacement::remove_left_overs_in(path());
    EXPECT_EQ(count(), 3) << "that of b is gone, the held one is not";
    kill(held, SIGKILL);
    waitpid(held, nullptr, 0);
    gxReplacement::remove_left_overs_of(path("b"));
    EXPECT_EQ(count(), 3);
    gxReplacement::remove_left_overs_of(path("a"));
    EXPECT_EQ(count(), 2);
    EXPECT_TRUE(fs::exists(path(".mr-mine.tmp")));
}
