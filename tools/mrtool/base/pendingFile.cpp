#include "pendingFile.h"

#include "utConcat.h"

#include "gxPNG.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// What a signal handler removes: the one pending file, or nothing while the text is empty.
char interrupted_path[4096];

void remember(std::string const& path)
{
    interrupted_path[0] = '\0';
    if (path.size() >= sizeof interrupted_path)
        return;
    // The first character last: a handler sees all of the path or none.
    std::memcpy(interrupted_path + 1, path.c_str() + 1, path.size());
    std::atomic_signal_fence(std::memory_order_seq_cst);
    interrupted_path[0] = path[0];
}

void forget()
{
    interrupted_path[0] = '\0';
}

void on_interrupt(int signal)
{
    if (interrupted_path[0] != '\0')
        unlink(interrupted_path);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

constexpr std::string_view pending_prefix = ".mrtool-";

/// Of this run, the same in its workers: in a folder that machines share, others may have the same numbers of
/// processes.
unsigned const run_number = std::random_device()();

/// What the names of a process's pending files begin with.
std::string front_of(pid_t process)
{
    return ut_concat(pending_prefix, process, "-", run_number, "-");
}

constexpr std::string_view pending_suffix = ".tmp";

constexpr int interrupts[] = {SIGINT, SIGTERM, SIGHUP};

/// While it lives, an interruption waits.
class InterruptsHeld
{
public:
    InterruptsHeld()
    {
        sigset_t held;
        sigemptyset(&held);
        for (int const signal : interrupts)
            sigaddset(&held, signal);
        pthread_sigmask(SIG_BLOCK, &held, &m_before);
    }
    ~InterruptsHeld() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    InterruptsHeld(InterruptsHeld const&) = delete;
    InterruptsHeld& operator=(InterruptsHeld const&) = delete;

private:
    sigset_t m_before;
};

/// Creates a file that is not there yet; from then on an interruption removes it.
/// @return 0 or the error
int create(std::string const& path)
{
    InterruptsHeld const held;
    int const file = open(path.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    if (file < 0)
        return errno;
    close(file);
    remember(path);
    return 0;
}

} // namespace

bool is_pending_name(std::string_view name)
{
    return name.starts_with(pending_prefix) && name.ends_with(pending_suffix);
}

void remove_left_over(std::string const& path, pid_t process)
{
    fs::path const folder = fs::path(path).parent_path();
    std::string const front = front_of(process);
    std::error_code failed;
    fs::directory_iterator at(folder.empty() ? "." : folder, failed);
    for (; !failed && at != fs::directory_iterator(); at.increment(failed)) {
        std::string const name = at->path().filename().string();
        if (name.starts_with(front) && is_pending_name(name))
            unlink(at->path().c_str());
    }
}

void remove_pending_files_on_interrupt()
{
    for (int const signal : interrupts)
        if (std::signal(signal, on_interrupt) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

PendingFile::PendingFile(std::string path) : m_path(std::move(path))
{
    fs::path const folder = fs::path(m_path).parent_path();
    std::error_code failed;
    if (!folder.empty())
        fs::create_directories(folder, failed);
    if (failed) {
        m_reason = ut_concat("the folder ", folder.string(), " cannot be made: ", failed.message());
        return;
    }
    static int count = 0;
    for (;;) {
        std::string const name = ut_concat(front_of(getpid()), ++count, pending_suffix);
        std::string const temporary = (folder / name).string();
        int const error = create(temporary);
        if (error == 0) {
            m_temporary = temporary;
            return;
        }
        if (error == EEXIST)
            continue;
        m_reason = ut_concat("the folder ", folder.empty() ? "." : folder.string(),
                             " takes no file: ", std::strerror(error));
        return;
    }
}

PendingFile::~PendingFile()
{
    if (good())
        unlink(m_temporary.c_str());
    forget();
}

bool PendingFile::complete()
{
    if (std::rename(m_temporary.c_str(), m_path.c_str()) != 0) {
        m_reason = ut_concat(m_path, " cannot be replaced: ", std::strerror(errno));
        return false;
    }
    m_temporary.clear();
    return true;
}

bool write_whole(std::string const& path, std::string& reason,
                 std::function<bool(std::string const& temporary)> const& write)
{
    PendingFile pending(path);
    reason = pending.reason();
    if (!pending.good() || !write(pending.temporary_path()))
        return false;
    bool const complete = pending.complete();
    reason = pending.reason();
    return complete;
}

bool write_png(dgDuctImage const& image, std::string const& path, std::string& reason)
{
    return write_whole(path, reason, [&](std::string const& temporary) {
        errno = 0;
        std::FILE* const file = std::fopen(temporary.c_str(), "wb");
        bool written =
            file && gxPNGWriterDuctImage::write_file(image, file, utStringutStringcoTable(1, 50)) != 0;
        int const error = errno;
        written = file && std::fclose(file) == 0 && written;
        if (!written)
            reason = ut_concat(path, " cannot be written: ", std::strerror(error != 0 ? error : errno));
        return written;
    });
}

} // namespace mrtool
