#include "coHash.h"

namespace {

std::uint32_t fnv1a(unsigned char const* bytes, std::size_t length)
{
    std::uint32_t hash = 2166136261u;
    for (std::size_t i = 0; i < length; ++i)
        hash = (hash ^ bytes[i]) * 16777619u;
    return hash;
}

} // namespace

std::uint32_t co_hash(void const* bytes, int length)
{
    return fnv1a(static_cast<unsigned char const*>(bytes), static_cast<std::size_t>(length < 0 ? 0 : length));
}

std::uint32_t co_hash(utString const& text)
{
    return fnv1a(reinterpret_cast<unsigned char const*>(text.c_str()), text.length());
}
