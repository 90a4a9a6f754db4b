// What can fail, or why it did.
#pragma once

#include <string>
#include <tl/expected.hpp>
#include <utility>

namespace sc {

/// A value, or in words why there is none.
template <class T>
using Expected = tl::expected<T, std::string>;

inline tl::unexpected<std::string> because(std::string reason)
{
    return tl::unexpected<std::string>(std::move(reason));
}

} // namespace sc
