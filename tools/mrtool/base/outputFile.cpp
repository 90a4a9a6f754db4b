#include "outputFile.h"

#include "fileKind.h"

#include "gxPNG.h"
#include "utConcat.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <random>
#include <unistd.h>

namespace mrtool {

namespace fs = std::filesystem;

namespace {

/// The path of the temporary file, for a signal handler to remove, or null.
std::atomic<char const*> pending_path = nullptr;

void remove_and_end(int signal)
{
    if (char const* const path = pending_path)
        unlink(path);
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

constexpr int interrupts[] = {SIGINT, SIGTERM, SIGHUP};

constexpr std::string_view pending_prefix = ".mrtool-";
constexpr std::string_view pending_suffix = ".tmp";

/// The same in this process and its workers. It keeps runs on several machines apart, which share a folder and
/// may have the same process numbers.
unsigned const run_number = std::random_device()();

/// The beginning of the names of a process's temporary files.
std::string make_prefix(pid_t process)
{
    return ut_concat(pending_prefix, process, "-", run_number, "-");
}

/// Creates an empty file, which an interruption from then on removes.
/// @return 0, or the error number: EEXIST when the path is taken
int create(char const* path)
{
    sigset_t delayed, before;
    sigemptyset(&delayed);
    for (int const signal : interrupts)
        sigaddset(&delayed, signal);
    pthread_sigmask(SIG_BLOCK, &delayed, &before);
    int const file = open(path, O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, 0666);
    int const error = file < 0 ? errno : 0;
    if (file >= 0) {
        close(file);
        pending_path = path;
    }
    pthread_sigmask(SIG_SETMASK, &before, nullptr);
    return error;
}

/// A temporary file, which is removed at the end unless it was renamed.
struct PendingFile
{
    std::string path;

    ~PendingFile()
    {
        if (!path.empty())
            unlink(path.c_str());
        pending_path = nullptr;
    }

    /// Creates the file, empty, beside @p target.
    Result<> create_beside(fs::path const& target)
    {
        fs::path const folder = target.parent_path();
        std::error_code failed;
        if (!folder.empty())
            fs::create_directories(folder, failed);
        if (failed)
            return fail(ut_concat("the folder ", folder.string(), " cannot be made: ", failed.message()));
        static int count = 0;
        int error = EEXIST;
        while (error == EEXIST) {
            path = (folder / ut_concat(make_prefix(getpid()), ++count, pending_suffix)).string();
            error = create(path.c_str());
        }
        if (error == 0)
            return {};
        path.clear();
        return fail(ut_concat("the folder ", folder.empty() ? "." : folder.string(),
                              " takes no file: ", std::strerror(error)));
    }
};

} // namespace

Result<> write_whole(std::string const& path,
                     std::function<Result<>(std::string const& temporary)> const& write)
{
    PendingFile pending;
    return pending.create_beside(path)
        .and_then([&] { return write(pending.path); })
        .and_then([&]() -> Result<> {
            if (std::rename(pending.path.c_str(), path.c_str()) != 0)
                return fail(ut_concat(path, " cannot be replaced: ", std::strerror(errno)));
            return {};
        });
}

Result<> write_temporary(std::string const& path, std::string const& temporary,
                         std::function<bool(std::FILE*)> const& write)
{
    errno = 0;
    std::FILE* const file = std::fopen(temporary.c_str(), "wb");
    bool written = file && write(file);
    int const error = errno;
    written = file && std::fclose(file) == 0 && written;
    if (!written)
        return fail(ut_concat(path, " cannot be written: ", std::strerror(error != 0 ? error : errno)));
    return {};
}

Result<> write_png(dgDuctImage const& image, std::string const& path)
{
    return write_whole(path, [&](std::string const& temporary) {
        return write_temporary(path, temporary, [&](std::FILE* file) {
            return gxPNGWriterDuctImage::write_file(image, file, utStringutStringcoTable(1, 50)) != 0;
        });
    });
}

Result<> check_picture_path(std::string const& path)
{
    std::error_code ignored;
    fs::file_status const status = fs::status(path, ignored);
    if (!fs::exists(status))
        return {};
    if (!fs::is_regular_file(status))
        return fail("which is no file");
    if (fs::file_size(path, ignored) != 0 && detect_kind(path).kind != FileKind::image)
        return fail("which is no picture");
    return {};
}

bool is_pending_name(std::string_view name)
{
    return name.starts_with(pending_prefix) && name.ends_with(pending_suffix);
}

void remove_left_over(std::string const& path, pid_t process)
{
    fs::path const folder = fs::path(path).parent_path();
    std::string const prefix = make_prefix(process);
    std::error_code failed;
    fs::directory_iterator at(folder.empty() ? "." : folder, failed);
    for (; !failed && at != fs::directory_iterator(); at.increment(failed)) {
        std::string const name = at->path().filename().string();
        if (name.starts_with(prefix) && is_pending_name(name))
            unlink(at->path().c_str());
    }
}

void remove_pending_file_on_interrupt()
{
    for (int const signal : interrupts)
        if (std::signal(signal, remove_and_end) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

} // namespace mrtool
