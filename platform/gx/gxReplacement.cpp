#include "gxReplacement.h"

#include "coHash.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace fs = std::filesystem;

namespace {

// A temporary file is called ".mr-", the hash of the file's name in eight digits, "-", a number and ".tmp". So those
// that a file left behind are found without a look at the whole folder.
constexpr std::string_view prefix = ".mr-";
constexpr std::string_view suffix = ".tmp";
constexpr std::size_t hash_digits = 8;
constexpr std::size_t fewest_characters = prefix.size() + hash_digits + 2 + suffix.size();
/// Left-overs with numbers below this are looked for. More than so many processes seldom write one file at a time.
constexpr int most_numbers = 20;
/// Numbers that are tried. Left-overs that cannot be removed keep theirs, such as those of another user.
constexpr int most_tries = 10'000;

constexpr int most_links = 40; // as many as the system follows

/// @param file  owned by the stream from then on
/// @return a stream that writes to the file; null when there is no memory for it
gxFile make_stream(gxDescriptor& file)
{
    gxFile stream(fdopen(file.get(), "wb"));
    if (stream)
        (void)file.release();
    return stream;
}

std::string make_temporary_path(fs::path const& path, int number)
{
    char name[32];
    std::snprintf(name, sizeof name, "%s%08x-%d%s", prefix.data(),
                  co_hash(utString(path.filename().string())), number, suffix.data());
    return (path.parent_path() / name).string();
}

bool is_same_file(struct stat const& one, struct stat const& other)
{
    return one.st_dev == other.st_dev && one.st_ino == other.st_ino;
}

/// Whether the path leads to this open file, and over no link.
bool is_at(int file, char const* path)
{
    struct stat open = {}, named = {};
    return fstat(file, &open) == 0 && lstat(path, &named) == 0 && is_same_file(open, named);
}

/// Whether another file can take the place of this one.
bool can_be_replaced(int file, struct stat const& status, char const* path)
{
    struct statx more = {};
    bool const mounted =
        statx(file, "", AT_EMPTY_PATH, 0, &more) == 0 && (more.stx_attributes & STATX_ATTR_MOUNT_ROOT) != 0;
    return S_ISREG(status.st_mode) && is_at(file, path) && !mounted;
}

bool is_refused(int error)
{
    return error == EACCES || error == EPERM || error == EROFS;
}

/// Removes a temporary file unless somebody writes it. A name may be given to another file at any time, but not while
/// its file is locked here.
void remove_left_over(char const* path)
{
    gxDescriptor const file(::open(path, O_RDONLY | O_NONBLOCK | O_NOFOLLOW | O_NOCTTY | O_CLOEXEC));
    if (file && flock(file.get(), LOCK_EX | LOCK_NB) == 0 && is_at(file.get(), path))
        unlink(path);
}

/// @return 0 or the error number
int copy_rights(struct stat const& from, int to)
{
    struct stat now = {};
    if (fstat(to, &now) != 0)
        return errno;
    // The owner first, since a change of it may take permissions away. What is right already may not be set on every
    // file system.
    if ((now.st_uid != from.st_uid || now.st_gid != from.st_gid) && fchown(to, from.st_uid, from.st_gid) != 0)
        return errno;
    if (now.st_mode != from.st_mode && fchmod(to, from.st_mode & 07777) != 0)
        return errno;
    return 0;
}

} // namespace

// The destructor runs also when there is no memory for one of the paths.
gxReplacement::gxReplacement(utString const& path, NewFile new_file) : gxReplacement()
{
    m_error = gx_has_nul(path) ? EINVAL : open(path.c_str(), new_file);
}

gxReplacement::~gxReplacement()
{
    if (m_file && is_at(fileno(m_file.get()), m_temporary.c_str()))
        unlink(m_temporary.c_str());
}

int gxReplacement::open(char const* path, NewFile new_file)
{
    gxDescriptor older(::open(path, O_WRONLY | O_NOCTTY | O_CLOEXEC));
    if (!older && errno != ENOENT)
        return errno;
    if (!older && new_file == NewFile::in_place) {
        gxDescriptor created(::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_NOCTTY | O_CLOEXEC, 0666));
        m_file = created ? make_stream(created) : nullptr;
        return m_file ? 0 : errno;
    }
    m_path = follow_links(path);
    if (!older)
        return open_beside(nullptr);
    struct stat status = {};
    if (fstat(older.get(), &status) != 0)
        return errno;
    if (can_be_replaced(older.get(), status, m_path.c_str()))
        if (int const error = open_beside(&status); !is_refused(error))
            return error;
    if (S_ISREG(status.st_mode) && ftruncate(older.get(), 0) != 0)
        return errno;
    m_file = make_stream(older);
    return m_file ? 0 : errno;
}

int gxReplacement::open_beside(struct stat const* older)
{
    m_replaces = older != nullptr;
    remove_left_overs_of(m_path);
    int error = EEXIST;
    for (int number = 0; error == EEXIST && number < most_tries; ++number)
        error = create_temporary(make_temporary_path(m_path, number), older);
    return error;
}

int gxReplacement::create_temporary(std::string path, struct stat const* older)
{
    int const flags = O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC;
    gxDescriptor file(::open(path.c_str(), flags, older ? 0600 : 0666));
    if (!file)
        return errno;
    // Whoever took it for one that was left behind removes it.
    if ((flock(file.get(), LOCK_EX | LOCK_NB) != 0 && errno == EWOULDBLOCK) ||
        !is_at(file.get(), path.c_str()))
        return EEXIST;
    int error = older ? copy_rights(*older, file.get()) : 0;
    if (error == 0) {
        m_file = make_stream(file);
        error = m_file ? 0 : errno;
    }
    if (error != 0)
        unlink(path.c_str());
    else
        m_temporary = std::move(path);
    return error;
}

int gxReplacement::finish()
{
    int error = std::ferror(m_file.get()) ? errno : 0;
    if (m_temporary.empty())
        return std::fclose(m_file.release()) != 0 && error == 0 ? errno : error;
    // It stays locked until it has its own name.
    gxDescriptor const held(fcntl(fileno(m_file.get()), F_DUPFD_CLOEXEC, 0));
    if (!held)
        return errno;
    if (std::fclose(m_file.release()) != 0 && error == 0)
        error = errno;
    if (error == 0)
        error = take_place(held.get());
    if (error != 0 && is_at(held.get(), m_temporary.c_str()))
        unlink(m_temporary.c_str());
    m_temporary.clear();
    return error;
}

/// @return 0 or the error number
int gxReplacement::take_place(int held) const
{
    if (m_replaces && fsync(held) != 0)
        return errno;
    // Another machine, which does not know of the lock, may have removed it.
    if (!is_at(held, m_temporary.c_str()))
        return ENOENT;
    return std::rename(m_temporary.c_str(), m_path.c_str()) != 0 ? errno : 0;
}

std::string gxReplacement::follow_links(std::string const& path)
{
    fs::path at = path;
    std::error_code failed;
    for (int links = 0; links < most_links; ++links) {
        fs::path const target = fs::read_symlink(at, failed);
        if (failed)
            break;
        at = at.parent_path() / target;
    }
    return at.string();
}

bool gxReplacement::is_temporary_name(std::string_view name)
{
    if (!name.starts_with(prefix) || !name.ends_with(suffix) || name.size() < fewest_characters)
        return false;
    name = name.substr(prefix.size(), name.size() - prefix.size() - suffix.size());
    std::string_view const hash = name.substr(0, hash_digits), number = name.substr(hash_digits);
    return hash.find_first_not_of("0123456789abcdef") == name.npos && number[0] == '-' &&
           number.substr(1).find_first_not_of("0123456789") == name.npos;
}

void gxReplacement::remove_left_overs_of(std::string const& path)
{
    std::string const file = follow_links(path);
    for (int number = 0; number < most_numbers; ++number)
        remove_left_over(make_temporary_path(file, number).c_str());
}

void gxReplacement::remove_left_overs_in(std::string const& folder)
{
    std::error_code failed;
    fs::directory_iterator at(folder.empty() ? "." : folder, failed);
    for (; !failed && at != fs::directory_iterator(); at.increment(failed))
        if (is_temporary_name(at->path().filename().native()))
            remove_left_over(at->path().c_str());
}
