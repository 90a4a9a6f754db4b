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

mrOutput::mrOutput(mrTarget const& target, Mode mode, mrFault& fault) : m_bytes(target.bytes()), m_mode(mode)
{
    if (m_bytes)
        m_file.reset(::open_memstream(&m_buffer, &m_size));
    else if (mode == Mode::append)
        m_file = gx_append_to_file(target.path());
    else
        m_replacement.emplace(target.path(), gxReplacement::NewFile::in_place);
    if (!file())
        fault.reason = describe_error(m_replacement ? m_replacement->error() : errno);
}

mrOutput::~mrOutput()
{
    m_file.reset();
    std::free(m_buffer);
}

bool mrOutput::close(mrFault& fault)
{
    int error = 0;
    if (m_replacement)
        error = m_replacement->finish();
    else {
        error = std::ferror(m_file.get()) ? errno : 0;
        errno = EIO;
        if (std::fclose(m_file.release()) != 0 && error == 0)
            error = errno;
        if (m_bytes)
            error = close_memory(error);
    }
    if (error != 0)
        fault.reason = describe_error(error);
    return error == 0;
}

/// Hands the bytes over that were written to memory.
/// @param error  of the writing, or 0
/// @return the error of all
int mrOutput::close_memory(int error)
{
    // A file in memory may lose its bytes without an error.
    if (!m_buffer)
        return error != 0 ? error : ENOMEM;
    if (m_mode == Mode::append)
        m_bytes->append(m_buffer, m_size);
    else if (error == 0)
        m_bytes->assign(m_buffer, m_size);
    return error;
}

void mrOutput::explain(mrFault& fault) const
{
    if (std::ferror(file()))
        fault.reason = describe_error(errno);
}
