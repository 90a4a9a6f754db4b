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

// How containers spread their keys over buckets; nothing else depends on it. Files come from strangers, and
// with a hash known beforehand one could hold keys that all fall into one bucket, so that reading it takes
// the square of its length. Hence these depend on numbers that each process draws once, at random.

/// The text as a polynomial modulo 2^61 - 1, its coefficients seven bytes each, at a point drawn by this
/// process (Carter, Wegman: "Universal classes of hash functions", 1979): two texts of at most n bytes have
/// one value with a chance of n / 7 + 1 in 2^61, and the same lower 32 bits with one of about that in 2^31.
UT_API std::size_t co_bucket_of_text(std::string_view text);

/// A universal hash of the number, chosen by this process.
UT_API std::size_t co_bucket_of_number(std::uint32_t number);

template <class Key>
struct coBucketHash;

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
