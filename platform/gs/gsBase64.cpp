#include "gsBase64.h"

#include <array>
#include <bit>
#include <cstdint>
#include <string_view>

namespace {

constexpr std::string_view alphabet = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";

// 64 bits fill ten characters of six bits and leave four, which the eleventh holds at its upper end.
constexpr int full_characters = 10;
constexpr std::size_t text_length = 12;

constexpr std::array<signed char, 256> reversed()
{
    std::array<signed char, 256> values{};
    values.fill(-1);
    for (std::size_t i = 0; i < alphabet.size(); ++i)
        values[static_cast<unsigned char>(alphabet[i])] = static_cast<signed char>(i);
    return values;
}

constexpr auto value_of = reversed();

// Base64 takes the first byte first, so the least significant byte of the double comes out on top.
std::uint64_t byte_swapped(std::uint64_t bits)
{
    std::uint64_t swapped = 0;
    for (int i = 0; i < 8; ++i)
        swapped = (swapped << 8) | ((bits >> (8 * i)) & 0xff);
    return swapped;
}

} // namespace

utString gsBase64::encode(double value)
{
    std::uint64_t const bits = byte_swapped(std::bit_cast<std::uint64_t>(value));
    std::string text;
    for (int i = 0; i < full_characters; ++i)
        text += alphabet[(bits >> (58 - 6 * i)) & 63];
    text += alphabet[(bits << 2) & 63];
    text += '=';
    return utString(std::move(text));
}

int gsBase64::decode(utString const& text, double& value)
{
    std::string_view const characters = text.view();
    if (characters.size() != text_length || characters.back() != '=')
        return 0;

    std::uint64_t bits = 0;
    for (int i = 0; i <= full_characters; ++i) {
        int const six = value_of[static_cast<unsigned char>(characters[static_cast<std::size_t>(i)])];
        if (six < 0)
            return 0;
        if (i < full_characters) {
            bits = (bits << 6) | static_cast<std::uint64_t>(six);
            continue;
        }
        if (six & 3)
            return 0; // bits beyond the eighth byte
        bits = (bits << 4) | static_cast<std::uint64_t>(six >> 2);
    }
    value = std::bit_cast<double>(byte_swapped(bits));
    return 1;
}
