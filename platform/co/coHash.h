// Hash values of the platform's simple types.
#pragma once

#include "utExport.h"
#include "utString.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string_view>

/// The 32-bit FNV-1a hash of @p length bytes (Fowler, Noll, Vo: offset 2166136261, prime 16777619).
/// The same on every machine for the same bytes.
UT_API std::uint32_t co_hash(void const* bytes, int length);

/// The hash of the text's bytes; an invalid string hashes like the empty one.
UT_API std::uint32_t co_hash(utString const& text);

/// The 128 bits of a keyed hash's key, the first eight bytes of it the first number, the lowest byte first.
struct coHashKey
{
    std::uint64_t first;
    std::uint64_t second;
};

/// SipHash-1-3 of the bytes (Aumasson, Bernstein: "SipHash: a fast short-input PRF", 2012, with one round a
/// word and three at the end). Who does not know the key cannot choose bytes that have one hash.
UT_API std::uint64_t co_keyed_hash(std::string_view bytes, coHashKey const& key);

// How containers spread their keys over buckets; nothing else depends on it. Files come from strangers, and
// with a hash known beforehand one could hold keys that all fall into one bucket, so that reading it takes
// the square of its length. Hence these depend on numbers that each process draws once, at random.

/// co_keyed_hash with the key of this process.
UT_API std::size_t co_bucket_of_text(std::string_view text);

/// A universal hash of the number, chosen by this process.
UT_API std::size_t co_bucket_of_number(std::uint32_t number);

template <class Key>
struct coBucketHash : std::hash<Key>
{};

template <>
struct coBucketHash<utString>
{
    std::size_t operator()(utString const& text) const { return co_bucket_of_text(text.view()); }
};

template <>
struct coBucketHash<int>
{
    std::size_t operator()(int number) const
    {
        return co_bucket_of_number(static_cast<std::uint32_t>(number));
    }
};
