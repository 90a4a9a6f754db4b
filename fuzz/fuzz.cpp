#include "fuzz.h"

#include "utAssert.h"

#include <zlib.h>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <sstream>
#include <string_view>
#include <sys/mman.h>
#include <unistd.h>

namespace {

long reports = 0;

} // namespace

extern "C" int LLVMFuzzerInitialize(int*, char***)
{
    // Damaged files are reported all the time.
    ut_set_assert_handler([](char const*, int, char const*) { ++reports; });
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    try_input(std::string(reinterpret_cast<char const*>(data), size));
    return 0;
}

long report_count()
{
    return reports;
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

std::string MemoryFile::bytes() const
{
    std::ostringstream text;
    text << std::ifstream(m_path, std::ios::binary).rdbuf();
    return text.str();
}

namespace {

constexpr std::string_view signature = "\x89PNG\r\n\x1a\n";
constexpr std::size_t around = 12; ///< bytes of a chunk beside its data: length, name, checksum

unsigned char* at(std::string& bytes, std::size_t place)
{
    return reinterpret_cast<unsigned char*>(bytes.data()) + place;
}

/// @return how long the chunk at the place is, or 0 when there is no whole one
std::size_t mend_chunk(std::string& bytes, std::size_t place)
{
    if (bytes.size() - place < around)
        return 0;
    unsigned char* const chunk = at(bytes, place);
    std::size_t const data =
        std::size_t{chunk[0]} << 24 | std::size_t{chunk[1]} << 16 | std::size_t{chunk[2]} << 8 | chunk[3];
    if (data > bytes.size() - place - around)
        return 0;
    uLong const sum = crc32(0, chunk + 4, static_cast<uInt>(data + 4));
    for (unsigned i = 0; i < 4; ++i)
        chunk[8 + data + i] = static_cast<unsigned char>(sum >> (24 - 8 * i));
    return around + data;
}

} // namespace

std::string with_checksums(std::string bytes)
{
    std::size_t image = 0;
    while ((image = bytes.find(signature, image)) != std::string::npos) {
        image += signature.size();
        std::size_t chunk = image;
        while (std::size_t const length = mend_chunk(bytes, chunk))
            chunk += length;
    }
    return bytes;
}
