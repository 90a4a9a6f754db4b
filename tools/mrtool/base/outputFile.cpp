#include "outputFile.h"

#include "fileKind.h"
#include "inputFile.h"

#include "gxPNG.h"
#include "gxReplacement.h"
#include "utConcat.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <optional>
#include <set>
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

constexpr int interrupts[] = {SIGINT, SIGTERM, SIGHUP, SIGQUIT};

/// Delays interruptions during its life.
class Uninterrupted
{
public:
    Uninterrupted()
    {
        sigset_t delayed;
        sigemptyset(&delayed);
        for (int const signal : interrupts)
            sigaddset(&delayed, signal);
        pthread_sigmask(SIG_BLOCK, &delayed, &m_before);
    }
    ~Uninterrupted() { pthread_sigmask(SIG_SETMASK, &m_before, nullptr); }
    Uninterrupted(Uninterrupted const&) = delete;
    Uninterrupted& operator=(Uninterrupted const&) = delete;

private:
    sigset_t m_before;
};

/// A file that is being written, whose temporary file an interruption removes.
class PendingFile
{
public:
    explicit PendingFile(std::string const& path)
    {
        Uninterrupted const now;
        m_file.emplace(utString(path), gxReplacement::NewFile::beside);
        if (!m_file->temporary().empty())
            pending_path = m_file->temporary().c_str();
    }

    ~PendingFile()
    {
        Uninterrupted const now;
        m_file.reset();
        pending_path = nullptr;
    }

    PendingFile(PendingFile const&) = delete;
    PendingFile& operator=(PendingFile const&) = delete;

    /// @return 0 or the error number
    int fill(std::function<bool(std::FILE*)> const& write)
    {
        if (m_file->error() != 0)
            return m_file->error();
        errno = EIO;
        if (!write(m_file->file()))
            return errno;
        Uninterrupted const now;
        int const error = m_file->finish();
        pending_path = nullptr;
        return error;
    }

private:
    std::optional<gxReplacement> m_file;
};

Result<> cannot_be_written(std::string_view path, std::string const& reason)
{
    return fail(ut_concat(path, " cannot be written: ", reason));
}

Result<> write_to_standard_output(std::function<bool(std::FILE*)> const& write)
{
    errno = EIO;
    int const own = fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 0);
    gxFile file(own < 0 ? nullptr : fdopen(own, "wb"));
    bool const written = file && write(file.get()) && std::fclose(file.release()) == 0;
    return written ? Result<>() : cannot_be_written("standard output", std::strerror(errno));
}

/// Makes the folder of a file, and removes what was left behind in it.
/// @return why it could not be made, or an empty text
std::string prepare_folder(std::string const& path)
{
    fs::path const folder = fs::path(gxReplacement::follow_links(path)).parent_path();
    std::error_code failed;
    if (!folder.empty())
        fs::create_directories(folder, failed);
    if (failed)
        return ut_concat("the folder ", folder.string(), " cannot be made: ", failed.message());
    static std::set<std::string> cleared;
    if (cleared.insert(folder.string()).second)
        gxReplacement::remove_left_overs_in(folder.string());
    return {};
}

/// Whether nobody may write the file. That binds whoever made it so, even if the system lets root write it.
bool is_read_only(std::string const& path)
{
    std::error_code ignored;
    fs::file_status const status = fs::status(path, ignored);
    constexpr fs::perms write = fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write;
    return fs::exists(status) && (status.permissions() & write) == fs::perms::none;
}

} // namespace

Result<> write_file(std::string const& path, std::function<bool(std::FILE*)> const& write)
{
    if (path == standard_output)
        return write_to_standard_output(write);
    if (!check_output_path(path))
        return cannot_be_written(path, "it is no file"); // its own words are for a sentence about wrong usage
    if (is_read_only(path))
        return cannot_be_written(path, "it is read-only");
    if (std::string const reason = prepare_folder(path); !reason.empty())
        return cannot_be_written(path, reason);
    int const error = PendingFile(path).fill(write);
    return error == 0 ? Result<>() : cannot_be_written(path, std::strerror(error));
}

Result<> write_bytes(std::string const& path, std::string_view bytes)
{
    return write_file(path, [&](std::FILE* file) {
        return std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    });
}

Result<> write_png(dgDuctImage const& image, std::string const& path)
{
    return write_file(path, [&](std::FILE* file) {
        return gxPNGWriterDuctImage::write_file(image, file, utStringutStringcoTable(1, 50)) != 0;
    });
}

Result<> check_output_path(std::string const& path)
{
    if (path == standard_output)
        return {};
    // It would be replaced, and what its owner writes to it afterwards lost.
    if (named_descriptor(path) || path == "/dev/stdout" || path == "/dev/stderr")
        return fail("which is an open file; - is standard output");
    std::error_code failed;
    fs::file_status const status = fs::status(path, failed);
    if (status.type() == fs::file_type::none)
        return fail(ut_concat("which leads nowhere: ", failed.message()));
    if (fs::exists(status) && !fs::is_regular_file(status))
        return fail("which is no file");
    return {};
}

Result<> check_picture_path(std::string const& path)
{
    if (Result<> const checked = check_output_path(path); !checked)
        return checked;
    std::error_code missing;
    std::uintmax_t const size = path == standard_output ? 0 : fs::file_size(path, missing);
    if (!missing && size != 0 && detect_kind(path).kind != FileKind::image)
        return fail("which is no picture");
    return {};
}

void remove_pending_file_on_interrupt()
{
    for (int const signal : interrupts)
        if (std::signal(signal, remove_and_end) == SIG_IGN)
            std::signal(signal, SIG_IGN);
}

} // namespace mrtool
