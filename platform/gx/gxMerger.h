// Numbers the different ones among many points. Used inside the project; not installed.
#pragma once

#include "coHash.h"

#include <algorithm>
#include <array>
#include <bit>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>
#include <vector>

/// Gives each different key a number, from 0, in the order in which they come.
/// @tparam Number  a coordinate; 0 and -0 are the same, and none is NaN
template <std::floating_point Number, std::size_t Size>
class gxMerger
{
public:
    using Key = std::array<Number, Size>;

    /// @param expected  about so many different keys
    explicit gxMerger(std::size_t expected) : m_slots(std::bit_ceil(expected + expected / 2 + 16), none)
    {
        m_keys.reserve(expected);
    }

    int add(Key const& key)
    {
        Key const plain = without_sign_of_zero(key);
        return add(plain, hash(plain));
    }

    /// Adds many at once, which takes less time: the memory that each needs is on its way while others are added.
    /// @param numbers  receives theirs
    void add(std::span<Key const> keys, int* numbers)
    {
        constexpr std::size_t at_once = 64;
        std::array<Key, at_once> plain;
        std::array<std::size_t, at_once> hashes;
        while (!keys.empty()) {
            std::size_t const count = std::min(keys.size(), at_once);
            for (std::size_t i = 0; i < count; ++i) {
                plain[i] = without_sign_of_zero(keys[i]);
                hashes[i] = hash(plain[i]);
                __builtin_prefetch(&m_slots[hashes[i] & (m_slots.size() - 1)]);
            }
            for (std::size_t i = 0; i < count; ++i)
                *numbers++ = add(plain[i], hashes[i]);
            keys = keys.subspan(count);
        }
    }

    /// All different keys, by their numbers.
    std::vector<Key> const& keys() const { return m_keys; }

private:
    static constexpr int none = -1;

    int add(Key const& key, std::size_t key_hash)
    {
        int& slot = slot_of(key, key_hash);
        if (slot != none)
            return slot;
        int const number = slot = static_cast<int>(m_keys.size());
        m_keys.push_back(key);
        if (m_keys.size() > m_slots.size() / 4 * 3)
            grow();
        return number;
    }

    /// The slot that holds the key's number, or where it belongs.
    int& slot_of(Key const& key, std::size_t key_hash)
    {
        std::size_t at = key_hash & (m_slots.size() - 1);
        while (m_slots[at] != none && m_keys[static_cast<std::size_t>(m_slots[at])] != key)
            at = (at + 1) & (m_slots.size() - 1);
        return m_slots[at];
    }

    static Key without_sign_of_zero(Key key)
    {
        for (Number& number : key)
            number += Number(0);
        return key;
    }

    std::size_t hash(Key const& key) const
    {
        using Bits = std::conditional_t<sizeof(Number) == 8, std::uint64_t, std::uint32_t>;
        std::uint64_t mixed = m_seed;
        for (Number const number : key) {
            mixed = (mixed ^ std::bit_cast<Bits>(number)) * 0x9E3779B97F4A7C15U;
            mixed ^= mixed >> 32;
        }
        return static_cast<std::size_t>(mixed);
    }

    void grow()
    {
        m_slots.assign(m_slots.size() * 2, none);
        for (std::size_t number = 0; number < m_keys.size(); ++number)
            slot_of(m_keys[number], hash(m_keys[number])) = static_cast<int>(number);
    }

    /// Drawn by the process: files come from strangers, who would else know which keys meet in one slot.
    std::uint64_t m_seed = std::uint64_t{co_bucket_of_number(0)} << 32 | co_bucket_of_number(1);
    std::vector<int> m_slots; // a power of two of them
    std::vector<Key> m_keys;
};
