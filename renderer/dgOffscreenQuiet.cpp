#include "dgOffscreenQuiet.h"

#include <atomic>
#include <cstdio>
#include <mutex>

#ifdef __GLIBC__

namespace {

thread_local int quiet_here = 0;

std::mutex guard;
int quiet_anywhere = 0;
std::atomic<std::FILE*> loud = nullptr; // the stream that was there before; read without the lock

ssize_t pass_on(void*, char const* bytes, std::size_t count)
{
    if (quiet_here == 0)
        std::fwrite(bytes, 1, count, loud);
    return static_cast<ssize_t>(count);
}

/// Never closed: another thread may still be about to write to it.
std::FILE* sieve()
{
    static std::FILE* const stream = [] {
        std::FILE* const made = fopencookie(nullptr, "w", {nullptr, pass_on, nullptr, nullptr});
        if (made)
            std::setvbuf(made, nullptr, _IONBF, 0);
        return made;
    }();
    return stream;
}

} // namespace

dgOffscreenQuiet::dgOffscreenQuiet()
{
    std::lock_guard const lock(guard);
    ++quiet_here;
    if (quiet_anywhere++ > 0 || !sieve())
        return;
    loud = stderr;
    stderr = sieve();
}

dgOffscreenQuiet::~dgOffscreenQuiet()
{
    std::lock_guard const lock(guard);
    --quiet_here;
    if (--quiet_anywhere == 0 && stderr == sieve())
        stderr = loud;
}

#else

dgOffscreenQuiet::dgOffscreenQuiet() = default;
dgOffscreenQuiet::~dgOffscreenQuiet() = default;

#endif
