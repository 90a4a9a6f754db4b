// Each attempt is made twice, by a child as it is, where it succeeds, and by one that contained itself.
#include "containment.h"

#include "childProcess.h"

#include "mrTest.h"

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <pthread.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace sandbox {

namespace {

using Work = std::function<int()>;

/// Has a child do the work.
/// @param work  gives its exit status
/// @return what waitpid() tells
int status_of(Work const& work)
{
    pid_t const child = fork();
    if (child == 0)
        _exit(work());
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

/// @param attempt  below 0, with errno, when it fails
/// @return 0, or that errno
int error_of(Work const& before, Work const& attempt)
{
    int const status = status_of([&] {
        before();
        return attempt() < 0 ? errno : 0;
    });
    return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
}

int contain_nothing()
{
    return 0;
}

int start_thread()
{
    pthread_t thread;
    errno = pthread_create(
        &thread, nullptr, [](void* self) { return self; }, nullptr);
    return errno == 0 ? pthread_join(thread, nullptr) : -1;
}

int raise_limit()
{
    rlimit files{};
    getrlimit(RLIMIT_NOFILE, &files);
    return setrlimit(RLIMIT_NOFILE, &files);
}

int let_others_look()
{
    return prctl(PR_GET_DUMPABLE) == 1 ? 0 : (errno = EPERM, -1);
}

int gain_privileges()
{
    return prctl(PR_GET_NO_NEW_PRIVS, 0, 0, 0, 0) == 0 ? 0 : (errno = EPERM, -1);
}

struct Attempt
{
    char const* what;
    int error; ///< of the contained child; 0 where it succeeds too
    Work attempt;
    bool concerns_processes = false; ///< which the address sanitizer has to be let do
};

/// Files to try things on.
struct containment : testing::Test
{
    TestFolder const folder;
    std::string const file = folder.path("file"), other = folder.path("other");
    int written = -1;

    void SetUp() override
    {
        write_bytes(file, "bytes");
        written = open(file.c_str(), O_WRONLY | O_CLOEXEC);
    }
    void TearDown() override { close(written); }

    /// Makes each attempt uncontained, then contained.
    void try_all(Work const& contain, std::vector<Attempt> const& attempts) const
    {
        for (Attempt const& each : attempts) {
            if (each.concerns_processes && under_address_sanitizer())
                continue;
            EXPECT_EQ(error_of(contain_nothing, each.attempt), 0) << each.what;
            write_bytes(file, "bytes");
            unlink(other.c_str());
            rmdir(other.c_str());
            EXPECT_EQ(error_of(contain, each.attempt), each.error) << each.what << ", contained";
        }
    }
};

} // namespace

TEST_F(containment, refuses_what_no_loader_needs)
{
    auto const contain = [] { return contain_process(), 0; };
    char const* const path = file.c_str();
    char const* const to = other.c_str();
    try_all(
        contain,
        {
            {"socket", EPERM, [] { return socket(AF_UNIX, SOCK_STREAM, 0); }},
            {"exec", EPERM, [] { return execl("/bin/true", "true", nullptr); }, true},
            {"fork", EPERM, [] { return fork(); }, true},
            {"vfork", EPERM, [] { return static_cast<int>(syscall(SYS_clone, SIGCHLD, 0, 0, 0, 0)); }, true},
            {"thread", 0, start_thread},
            {"ptrace", EPERM, [] { return static_cast<int>(ptrace(PTRACE_TRACEME, 0, 0, 0)); }, true},
            {"signal to another", EPERM, [] { return kill(getppid(), 0); }, true},
            {"group of its own", EPERM, [] { return setpgid(0, 0); }, true},
            {"life after its parent", EPERM, [] { return prctl(PR_SET_PDEATHSIG, 0); }, true},
            {"being looked into", EPERM, let_others_look, true},
            {"new privileges", EPERM, gain_privileges},
            {"limit", EPERM, raise_limit},
            {"open for writing", EPERM, [=] { return open(path, O_WRONLY); }},
            {"open for both", EPERM, [=] { return open(path, O_RDWR); }},
            {"open and truncate", EPERM, [=] { return open(path, O_RDONLY | O_TRUNC); }},
            {"create", EPERM, [=] { return open(to, O_RDONLY | O_CREAT, 0600); }},
            {"nameless file", EPERM,
             [this] { return open(folder.path("").c_str(), O_TMPFILE | O_RDWR, 0600); }},
            {"truncate", EPERM, [=] { return truncate(path, 0); }},
            {"rename", EPERM, [=] { return rename(path, to); }},
            {"remove", EPERM, [=] { return unlink(path); }},
            {"folder", EPERM, [=] { return mkdir(to, 0700); }},
            {"write to an open file", EFBIG,
             [this] { return static_cast<int>(pwrite(written, "x", 1, 100)); }},
            {"read", 0, [=] { return open(path, O_RDONLY); }},
        });
}

/// Without the filter of system calls, which would refuse most of it first.
TEST_F(containment, lets_nothing_be_opened_but_for_reading_in_the_places_given)
{
    if (WEXITSTATUS(status_of([] { return restrict_reading({}); })) == 0)
        GTEST_SKIP() << "this kernel has no Landlock";
    TestFolder const elsewhere;
    std::string const given = elsewhere.path("given"), secret = elsewhere.path("secret");
    write_bytes(given, "given");
    write_bytes(secret, "secret");
    auto const contain = [&] {
        // Landlock asks it of all but root.
        return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0),
               restrict_reading({folder.path(""), given, folder.path("missing")});
    };
    char const* const path = file.c_str();
    char const* const to = other.c_str();
    try_all(contain, {
                         {"read beneath a folder", 0, [=] { return open(path, O_RDONLY); }},
                         {"list a folder", 0, [this] { return open(folder.path("").c_str(), O_RDONLY); }},
                         {"read a file given", 0, [&] { return open(given.c_str(), O_RDONLY); }},
                         {"read another", EACCES, [&] { return open(secret.c_str(), O_RDONLY); }},
                         {"read users", EACCES, [] { return open("/etc/passwd", O_RDONLY); }},
                         {"open for writing", EACCES, [=] { return open(path, O_WRONLY); }},
                         {"make a folder", EACCES, [=] { return mkdir(to, 0700); }},
                         {"remove", EACCES, [=] { return unlink(path); }},
                         {"exec", EACCES, [] { return execl("/bin/true", "true", nullptr); }},
                     });
}

TEST_F(containment, leaves_no_core)
{
    auto const crash = [this] {
        rlimit limit{};
        getrlimit(RLIMIT_CORE, &limit);
        limit.rlim_cur = limit.rlim_max;
        setrlimit(RLIMIT_CORE, &limit);
        return chdir(folder.path("").c_str()), std::signal(SIGSEGV, SIG_DFL), raise(SIGSEGV);
    };
    if (!WCOREDUMP(status_of(crash)))
        GTEST_SKIP() << "this system leaves none at all";
    auto const contained = [&] { return contain_process(), crash(); };
    EXPECT_FALSE(WCOREDUMP(status_of(contained)));
}

} // namespace sandbox
