#include "mrTarget.h"

mrTarget mrTarget::to_path(utString const& path)
{
    mrTarget target;
    target.m_path = path;
    return target;
}

mrTarget mrTarget::to_memory(std::string& bytes)
{
    mrTarget target;
    target.m_bytes = &bytes;
    return target;
}
