#include "coHash.h"

#include <bit>
#include <chrono>
#include <cstring>
#include <exception>
#include <random>

namespace {

std::uint32_t fnv1a(unsigned char const* bytes, std::size_t length)
{
    std::uint32_t hash = 2166136261u;
    for (std::size_t i = 0; i < length; ++i)
        hash = (hash ^ bytes[i]) * 16777619u;
    return hash;
}

constexpr std::uint64_t prime = (std::uint64_t{1} << 61) - 1;

/// A number below 2^61 + 8 that is congruent, modulo the prime, to the product of one below 2^62 and one below
/// the prime.
std::uint64_t product(std::uint64_t one, std::uint64_t other)
{
    __extension__ using Wide = unsigned __int128;
    Wide const wide = Wide{one} * other;
    std::uint64_t const sum =
        static_cast<std::uint64_t>(wide & prime) + static_cast<std::uint64_t>(wide >> 61);
    return (sum & prime) + (sum >> 61);
}

constexpr std::size_t step = 7;

/// The first seven of eight bytes as a number.
std::uint64_t coefficient_at(char const* bytes)
{
    std::uint64_t word = 0;
    std::memcpy(&word, bytes, sizeof word);
    if constexpr (std::endian::native == std::endian::big)
        return word >> 8;
    return word & ((std::uint64_t{1} << 8 * step) - 1);
}

std::uint64_t random_word()
{
    try {
        std::random_device source;
        return std::uint64_t{source()} << 32 | source();
    } catch (std::exception const&) {
        // Without a source of random numbers the time is better than nothing.
        return static_cast<std::uint64_t>(std::chrono::steady_clock::now().time_since_epoch().count());
    }
}

/// The random numbers by which this process spreads its buckets.
struct Key
{
    std::uint64_t const point = random_word() % (prime - 1) + 1;
    std::uint64_t const factor = random_word() | 1;
    std::uint64_t const offset = random_word();
};

Key const& key()
{
    static Key const drawn;
    return drawn;
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

std::size_t co_bucket_of_text(std::string_view text)
{
    std::uint64_t const point = key().point;
    std::uint64_t value = text.size();
    for (; text.size() > step; text.remove_prefix(step))
        value = product(value + coefficient_at(text.data()), point);
    std::uint64_t rest = 1; // so that a NUL in front of it counts
    for (char const character : text)
        rest = rest << 8 | static_cast<unsigned char>(character);
    return static_cast<std::size_t>(product(value + rest, point));
}

// Dietzfelbinger, "Universal hashing and k-wise independent random variables via integer arithmetic without
// primes" (1996): two different numbers meet in the upper half with the chance of a random choice.
std::size_t co_bucket_of_number(std::uint32_t number)
{
    return static_cast<std::size_t>((key().factor * number + key().offset) >> 32);
}
