#include "coHash.h"

#include <bit>
#include <chrono>
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

/// The state of SipHash and its one round.
struct Sip
{
    std::uint64_t v0, v1, v2, v3;

    void round()
    {
        v0 += v1;
        v2 += v3;
        v1 = std::rotl(v1, 13) ^ v0;
        v3 = std::rotl(v3, 16) ^ v2;
        v0 = std::rotl(v0, 32) + v3;
        v2 += v1;
        v3 = std::rotl(v3, 21) ^ v0;
        v1 = std::rotl(v1, 17) ^ v2;
        v2 = std::rotl(v2, 32);
    }

    void absorb(std::uint64_t word)
    {
        v3 ^= word;
        round();
        v0 ^= word;
    }
};

/// Eight bytes as a number, the first the lowest.
std::uint64_t little_endian(char const* bytes)
{
    // Written so that compilers make one load of it.
    auto const byte = [bytes](int i) {
        return std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    };
    return byte(0) | byte(1) | byte(2) | byte(3) | byte(4) | byte(5) | byte(6) | byte(7);
}

/// What is left of the bytes after all whole words, as such a number.
std::uint64_t rest_of(std::string_view bytes)
{
    std::size_t const rest = bytes.size() % 8;
    if (rest == 0)
        return 0;
    // The last whole word, without what of it is no rest: quicker than to go through the bytes.
    if (bytes.size() > 8)
        return little_endian(bytes.data() + bytes.size() - 8) >> (8 * (8 - rest));
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < rest; ++i)
        word |= std::uint64_t{static_cast<unsigned char>(bytes[i])} << (8 * i);
    return word;
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

/// What this process spreads its buckets by.
struct Key
{
    coHashKey const text{random_word(), random_word()};
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

std::uint64_t co_keyed_hash(std::string_view bytes, coHashKey const& key)
{
    Sip sip{key.first ^ 0x736f6d6570736575u, key.second ^ 0x646f72616e646f6du,
            key.first ^ 0x6c7967656e657261u, key.second ^ 0x7465646279746573u};
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8)
        sip.absorb(little_endian(bytes.data() + at));
    sip.absorb(rest_of(bytes) | std::uint64_t{bytes.size()} << 56);
    sip.v2 ^= 0xff;
    for (int i = 0; i < 3; ++i)
        sip.round();
    return sip.v0 ^ sip.v1 ^ sip.v2 ^ sip.v3;
}

std::size_t co_bucket_of_text(std::string_view text)
{
    return static_cast<std::size_t>(co_keyed_hash(text, key().text));
}

// Dietzfelbinger, "Universal hashing and k-wise independent random variables via integer arithmetic without
// primes" (1996): two different numbers meet in the upper half with the chance of a random choice.
std::size_t co_bucket_of_number(std::uint32_t number)
{
    return static_cast<std::size_t>((key().factor * number + key().offset) >> 32);
}
