// Hash values of the platform's simple types.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <cstdint>
#include <functional>

/// The 32-bit FNV-1a hash of @p length bytes (Fowler, Noll, Vo: offset 2166136261, prime 16777619).
/// The same on every machine for the same bytes.
UT_API std::uint32_t co_hash(void const* bytes, int length);

/// The hash of the text's bytes; an invalid string hashes like the empty one.
UT_API std::uint32_t co_hash(utString const& text);

/// How containers spread their keys over buckets; nothing else depends on it.
template <class Key>
struct coBucketHash : std::hash<Key>
{};

template <>
struct coBucketHash<utString>
{
    std::size_t operator()(utString const& text) const { return std::hash<std::string_view>()(text.view()); }
};
