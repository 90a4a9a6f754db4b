#include "mrOutput.h"

#include "mrFault.h"
#include "mrTarget.h"

#include <cerrno>
#include <cstdlib>
#include <system_error>

namespace {

utString describe_error(int error)
{
    return utString(std::generic_category().message(error));
}

} // namespace

mrOutput::mrOutput(mrTarget const& target, Mode mode, mrFault& fault) : m_bytes(target.bytes())
{
    errno = EINVAL;
    if (m_bytes)
        m_file.reset(::open_memstream(&m_buffer, &m_size));
    else
        m_file = gx_create_file(target.path(), mode == Mode::replace ? "wbe" : "abe");
    if (!m_file)
        fault.reason = describe_error(errno);
    else if (m_bytes && mode == Mode::replace)
        m_bytes->clear();
}

mrOutput::~mrOutput()
{
    m_file.reset();
    std::free(m_buffer);
}

bool mrOutput::close(mrFault& fault)
{
    // The error of the write that failed, where one did.
    int error = std::ferror(m_file.get()) ? errno : 0;
    errno = EIO;
    if (std::fclose(m_file.release()) != 0 && error == 0)
        error = errno;
    // A file in memory may lose its bytes without an error.
    if (m_bytes && !m_buffer && error == 0)
        error = ENOMEM;
    if (m_bytes && m_buffer)
        m_bytes->append(m_buffer, m_size);
    if (error != 0)
        fault.reason = describe_error(error);
    return error == 0;
}
