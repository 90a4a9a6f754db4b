// Reading hostile files in a process of its own, under a limit on memory and time.
#pragma once

#include <cstdint>
#include <functional>
#include <string>

/// Whether the address sanitizer takes the limit's place: it maps terabytes by itself, and is slow.
#if defined(__SANITIZE_ADDRESS__)
inline constexpr bool sanitized = true;
#elif defined(__has_feature)
inline constexpr bool sanitized = __has_feature(address_sanitizer);
#else
inline constexpr bool sanitized = false;
#endif

/// What is read, and what that may cost.
struct Hostile
{
    std::string title;
    std::int64_t bytes = 0;  ///< of the file
    std::int64_t pixels = 0; ///< that the reader may admit
};

/// Does the work in a child, which may map 64 MiB more than at its start, forty bytes for each byte of the
/// file and four for each pixel, and may take two seconds of processor time, one more for each 2 MiB of the
/// file and one for each 2^25 pixels.
///
/// Prints a row of the table "input, bytes, outcome, seconds, peak memory in MiB, memory allowed".
/// @return what the work returned, or "signal N" or "status N" where the child ended otherwise
std::string confined(Hostile const& input, std::function<std::string()> const& work);
