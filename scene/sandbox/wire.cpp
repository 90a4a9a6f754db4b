#include "wire.h"

#include <cerrno>
#include <unistd.h>

namespace sandbox {

namespace {

constexpr std::size_t enough_to_send = std::size_t{1} << 18;

bool write_all(int file, char const* data, std::size_t size)
{
    while (size > 0) {
        ssize_t const written = ::write(file, data, size);
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            return false;
        data += written;
        size -= static_cast<std::size_t>(written);
    }
    return true;
}

} // namespace

void WireWriter::bytes(void const* data, std::size_t size)
{
    if (size >= enough_to_send) {
        finish();
        m_failed = m_failed || !write_all(m_file, static_cast<char const*>(data), size);
        return;
    }
    m_held.append(static_cast<char const*>(data), size);
    if (m_held.size() >= enough_to_send)
        finish();
}

bool WireWriter::finish()
{
    m_failed = m_failed || !write_all(m_file, m_held.data(), m_held.size());
    m_held.clear();
    return !m_failed;
}

std::size_t WireReader::count(std::size_t member_size)
{
    std::uint64_t count = 0;
    (*this)(count);
    if (count <= m_left.size() / member_size)
        return static_cast<std::size_t>(count);
    m_failed = true;
    return 0;
}

std::string_view WireReader::take(std::size_t size)
{
    m_failed = m_failed || size > m_left.size();
    if (m_failed)
        return {};
    std::string_view const taken = m_left.substr(0, size);
    m_left.remove_prefix(size);
    return taken;
}

} // namespace sandbox
