#include "mrSource.h"

#include "mrFault.h"

#include "gxOpenFile.h"

mrSource mrSource::from_path(utString const& path)
{
    mrSource source(Kind::path);
    source.m_path = path;
    return source;
}

mrSource mrSource::from_descriptor(int descriptor)
{
    mrSource source(Kind::descriptor);
    source.m_descriptor = descriptor;
    return source;
}

mrSource mrSource::from_memory(std::string_view bytes)
{
    mrSource source(Kind::memory);
    source.m_bytes = bytes;
    return source;
}

std::FILE* mrSource::open(mrFault& fault) const
{
    switch (m_kind) {
    case Kind::path:
        return gx_open_file(m_path, fault.reason).release();
    case Kind::descriptor:
        return gx_open_descriptor(m_descriptor, fault.reason).release();
    default:
        return gx_open_memory(m_bytes, fault.reason).release();
    }
}
