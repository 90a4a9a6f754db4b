#include "mrSource.h"

#include "mrGuard.h"

#include "gxOpenFile.h"

std::FILE* mrSource::open(mrFault& fault) const
{
    return mr_guard(fault, static_cast<std::FILE*>(nullptr), [&] {
        if (auto const* path = std::get_if<utString>(&m_place))
            return gx_open_file(*path, fault.reason).release();
        if (auto const* descriptor = std::get_if<int>(&m_place))
            return gx_open_descriptor(*descriptor, fault.reason).release();
        return gx_open_memory(std::get<std::string_view>(m_place), fault.reason).release();
    });
}
