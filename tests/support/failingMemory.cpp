#include "failingMemory.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <link.h>
#include <new>
#include <string_view>

#if defined(__has_feature)
#if __has_feature(address_sanitizer)
#define HAS_ADDRESS_SANITIZER
#endif
#endif
#ifdef __SANITIZE_ADDRESS__
#define HAS_ADDRESS_SANITIZER
#endif

namespace {

std::atomic<long> live = 0;
bool armed = false;
bool has_failed = false;
long succeeding_left = 0;
FailingMemory::Extent failing = FailingMemory::Extent::one;

bool fails_now()
{
    if (!armed || succeeding_left-- > 0)
        return false;
    if (has_failed && failing == FailingMemory::Extent::one)
        return false;
    has_failed = true;
    return true;
}

void* counted(void* memory)
{
    if (memory)
        ++live;
    return memory;
}

} // namespace

FailingMemory::~FailingMemory()
{
    armed = false;
}

bool FailingMemory::failed() const
{
    return has_failed;
}

long count_live_allocations()
{
    return live;
}

#ifdef HAS_ADDRESS_SANITIZER

namespace {

void* take(std::size_t size)
{
    return counted(std::malloc(size));
}

void give(void* memory)
{
    if (memory)
        --live;
    std::free(memory);
}

void find_watched() {}

} // namespace

#else

extern "C" {
void* __libc_malloc(std::size_t size);
void* __libc_calloc(std::size_t count, std::size_t size);
void* __libc_realloc(void* memory, std::size_t size);
void __libc_free(void* memory);
}

namespace {

struct Range
{
    std::uintptr_t begin = 0;
    std::uintptr_t end = 0;
};

/// Where the code of the libraries is whose allocations may fail; the rest is empty.
std::array<Range, 32> watched;
std::size_t watched_count = 0;

int note_library(dl_phdr_info* library, std::size_t, void*)
{
    // The platform allocates for libpng.
    std::string_view const name = library->dlpi_name;
    for (std::string_view const part : {"libpng", "libexpat", "libpcre2-8", "libmrplatform"})
        if (name.find(part) != name.npos)
            for (int at = 0; at < library->dlpi_phnum; ++at) {
                auto const& segment = library->dlpi_phdr[at];
                std::uintptr_t const begin = library->dlpi_addr + segment.p_vaddr;
                if (segment.p_type == PT_LOAD && (segment.p_flags & PF_X) && watched_count < watched.size())
                    watched[watched_count++] = {begin, begin + segment.p_memsz};
            }
    return 0;
}

void find_watched()
{
    if (watched_count == 0)
        dl_iterate_phdr(note_library, nullptr);
}

bool fails_for(void const* caller)
{
    if (!armed)
        return false;
    auto const address = reinterpret_cast<std::uintptr_t>(caller);
    bool const is_watched =
        std::any_of(watched.begin(), watched.begin() + static_cast<std::ptrdiff_t>(watched_count),
                    [=](Range const& each) { return address >= each.begin && address < each.end; });
    if (!is_watched || !fails_now())
        return false;
    errno = ENOMEM;
    return true;
}

void* take(std::size_t size)
{
    return counted(__libc_malloc(size));
}

void give(void* memory)
{
    if (memory)
        --live;
    __libc_free(memory);
}

} // namespace

extern "C" {

void* malloc(std::size_t size)
{
    return fails_for(__builtin_return_address(0)) ? nullptr : take(size);
}

void* calloc(std::size_t count, std::size_t size)
{
    return fails_for(__builtin_return_address(0)) ? nullptr : counted(__libc_calloc(count, size));
}

void* realloc(void* memory, std::size_t size)
{
    if (fails_for(__builtin_return_address(0)))
        return nullptr;
    void* const moved = __libc_realloc(memory, size);
    return memory ? moved : counted(moved);
}

void free(void* memory)
{
    give(memory);
}
}

#endif

FailingMemory::FailingMemory(long succeeding, Extent extent)
{
    find_watched();
    succeeding_left = succeeding;
    failing = extent;
    has_failed = false;
    armed = true;
}

void* operator new(std::size_t size)
{
    void* const memory = fails_now() ? nullptr : take(size);
    if (!memory)
        throw std::bad_alloc();
    return memory;
}

void* operator new[](std::size_t size)
{
    return operator new(size);
}

void* operator new(std::size_t size, std::nothrow_t const&) noexcept
{
    return fails_now() ? nullptr : take(size);
}

void* operator new[](std::size_t size, std::nothrow_t const&) noexcept
{
    return fails_now() ? nullptr : take(size);
}

void operator delete(void* memory) noexcept
{
    give(memory);
}

void operator delete[](void* memory) noexcept
{
    give(memory);
}

void operator delete(void* memory, std::size_t) noexcept
{
    give(memory);
}

void operator delete[](void* memory, std::size_t) noexcept
{
    give(memory);
}
