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
        m_file = gx_create_file(target.path(), mode == Mode::replace ? "wb" : "ab");
    if (!m_file)
        fault.reason = describe_error(errno);
    if (m_bytes && mode == Mode::replace)
        m_bytes->clear();
}

mrOutput::~mrOutput()
{
    m_file.reset();
    std::free(m_buffer);
}

bool mrOutput::close(mrFault& fault)
{
    errno = EIO;
    bool const failed = std::ferror(m_file.get()) != 0;
    bool const whole = std::fclose(m_file.release()) == 0 && !failed;
    if (m_bytes)
        m_bytes->append(m_buffer, m_size);
    if (!whole)
        fault.reason = describe_error(errno);
    return whole;
}
