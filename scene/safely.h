// Keeps what is thrown inside the library. Used inside the library.
#pragma once

#include <exception>
#include <new>
#include <string>

namespace sc {

/// Does a piece of work. What it throws, a reader in this process for example, is a reason too.
/// @return whether the work said so and threw nothing
template <class Work>
bool do_safely(std::string& reason, Work const& work)
{
    try {
        try {
            return work();
        } catch (std::bad_alloc const&) {
            reason = "not enough memory";
        } catch (std::exception const& error) {
            reason = error.what();
        }
    } catch (std::bad_alloc const&) {
        reason = "no memory"; // short enough to need none
    }
    return false;
}

} // namespace sc
