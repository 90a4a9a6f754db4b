// The one shape of an error.
#pragma once

#include <cstdint>
#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace mrtool {

/// An error in words for the user, and its place.
struct Fault
{
    std::string words;
    std::int64_t line = 0; ///< of the file, from 1; 0 when the words are about no line
};

/// A value, or the fault that prevented it.
template <class T = void>
using Result = tl::expected<T, Fault>;

/// Makes the Result of a function that fails.
inline tl::unexpected<Fault> fail(std::string words, std::int64_t line = 0)
{
    return tl::unexpected(Fault{std::move(words), line});
}

} // namespace mrtool
