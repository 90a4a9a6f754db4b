#include "fuzz.h"

#include "utAssert.h"

#include <arpa/inet.h>
#include <zlib.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Damaged files are reported all the time.
    ut_set_assert_handler([](char const*, int, char const*) {});
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    try_input(std::string(reinterpret_cast<char const*>(data), size));
    return 0;
}

void require(bool condition, char const* words)
{
    if (condition)
        return;
    std::fprintf(stderr, "It does not hold that %s.\n", words);
    std::abort();
}

MemoryFile::MemoryFile(std::string const& bytes)
    : m_descriptor(memfd_create("input", MFD_CLOEXEC)),
      m_path("/proc/self/fd/" + std::to_string(m_descriptor))
{
    ssize_t const written = ::write(m_descriptor, bytes.data(), bytes.size());
    require(written == static_cast<ssize_t>(bytes.size()), "memory takes the file");
}

MemoryFile::~MemoryFile()
{
    ::close(m_descriptor);
}

std::string with_checksums(std::string bytes)
{
    constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
    constexpr std::size_t around = 12; // bytes of a chunk beside its data: length, name, checksum
    for (std::size_t image = 0; (image = bytes.find(signature, image)) != std::string::npos;) {
        image += signature.size();
        for (std::size_t chunk = image; bytes.size() - chunk >= around;) {
            char* const start = bytes.data() + chunk;
            std::uint32_t length = 0;
            std::memcpy(&length, start, 4);
            length = ntohl(length);
            if (length > bytes.size() - chunk - around)
                break;
            uLong const sum = crc32(0, reinterpret_cast<Bytef const*>(start + 4), length + 4);
            std::uint32_t const stored = htonl(static_cast<std::uint32_t>(sum));
            std::memcpy(start + 8 + length, &stored, 4);
            chunk += around + length;
        }
    }
    return bytes;
}
