#include "room.h"

#include <algorithm>
#include <fcntl.h>
#include <limits>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace sandbox {

namespace {

/// The limit on the size of files, which holds for this one too.
std::uint64_t largest_file()
{
    constexpr std::uint64_t most = std::numeric_limits<off_t>::max();
    rlimit now{};
    return getrlimit(RLIMIT_FSIZE, &now) == 0 ? std::min<std::uint64_t>(now.rlim_cur, most) : most;
}

} // namespace

Room::Room(std::uint64_t size)
    : m_size(std::min(size, largest_file())), m_file(memfd_create("room", MFD_CLOEXEC | MFD_ALLOW_SEALING))
{
    // A file that is shortened while it is mapped would end whoever reads it.
    if (m_file < 0 || (ftruncate(m_file, static_cast<off_t>(m_size)) == 0 &&
                       fcntl(m_file, F_ADD_SEALS, F_SEAL_SHRINK | F_SEAL_GROW) == 0))
        return;
    ::close(m_file);
    m_file = -1;
}

Room::~Room()
{
    if (!m_mapped.empty())
        munmap(const_cast<char*>(m_mapped.data()), m_mapped.size()); // the call's signature
    if (m_file >= 0)
        ::close(m_file);
}

std::uint64_t Room::size_of(int file)
{
    struct stat status
    {};
    return fstat(file, &status) == 0 ? static_cast<std::uint64_t>(status.st_size) : 0;
}

std::optional<std::string_view> Room::close(std::uint64_t written)
{
    // Fails while anybody has it mapped for writing.
    if (written > m_size || fcntl(m_file, F_ADD_SEALS, F_SEAL_WRITE) != 0)
        return std::nullopt;
    if (written == 0 || !m_mapped.empty())
        return m_mapped;
    void* const mapped = mmap(nullptr, written, PROT_READ, MAP_PRIVATE | MAP_POPULATE, m_file, 0);
    if (mapped == MAP_FAILED)
        return std::nullopt;
    m_mapped = {static_cast<char const*>(mapped), written};
    return m_mapped;
}

} // namespace sandbox
