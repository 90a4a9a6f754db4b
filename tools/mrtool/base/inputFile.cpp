#include "inputFile.h"

#include "utConcat.h"

#include <array>
#include <cerrno>
#include <charconv>
#include <cstring>
#include <poll.h>
#include <string_view>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace mrtool {

namespace {

std::string descriptor_path(int descriptor)
{
    return ut_concat("/proc/self/fd/", descriptor);
}

/// Reads what is there, and waits while nothing is.
/// @return how many bytes; 0 at the end, below 0 with errno on failure
ssize_t read_some(int from, std::array<char, 1 << 16>& piece)
{
    for (;;) {
        ssize_t const got = ::read(from, piece.data(), piece.size());
        if (got >= 0 || (errno != EINTR && errno != EAGAIN))
            return got;
        pollfd waiting{from, POLLIN, 0};
        poll(&waiting, 1, -1);
    }
}

bool write_all(int to, std::string_view bytes)
{
    while (!bytes.empty()) {
        ssize_t const written = ::write(to, bytes.data(), bytes.size());
        if (written < 0)
            return false;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return true;
}

Result<gxDescriptor> copy_to_memory(int from)
{
    gxDescriptor to(memfd_create("piped", MFD_CLOEXEC));
    bool kept = static_cast<bool>(to);
    std::array<char, 1 << 16> piece;
    ssize_t got = 0;
    for (std::size_t size = 0; kept && (got = read_some(from, piece)) > 0;) {
        size += static_cast<std::size_t>(got);
        if (size > max_piped_bytes)
            return fail(
                ut_concat("larger than ", max_piped_bytes >> 20, " MiB, the most that is taken from a pipe"));
        kept = write_all(to.get(), {piece.data(), static_cast<std::size_t>(got)});
    }
    if (!kept)
        return fail(ut_concat("no memory for it: ", std::strerror(errno)));
    if (got < 0)
        return fail(ut_concat("reading it failed before its end: ", std::strerror(errno)));
    return to;
}

} // namespace

std::optional<int> named_descriptor(std::string const& argument)
{
    if (argument == "-" || argument == "/dev/stdin")
        return STDIN_FILENO;
    for (std::string_view const folder : {"/dev/fd/", "/proc/self/fd/"}) {
        int number = -1;
        char const* const end = argument.data() + argument.size();
        if (argument.starts_with(folder) &&
            std::from_chars(argument.data() + folder.size(), end, number).ptr == end && number >= 0)
            return number;
    }
    return std::nullopt;
}

std::string find_opened_path(std::string const& argument)
{
    std::optional<int> const descriptor = named_descriptor(argument);
    return descriptor ? descriptor_path(*descriptor) : argument;
}

Result<InputFile> find_input(std::string const& argument)
{
    std::optional<int> const descriptor = named_descriptor(argument);
    if (!descriptor)
        return InputFile{argument, gxDescriptor()};
    struct stat status
    {};
    if (fstat(*descriptor, &status) != 0)
        return fail(std::strerror(errno));
    if (S_ISREG(status.st_mode) || S_ISDIR(status.st_mode))
        return InputFile{descriptor_path(*descriptor), gxDescriptor()};
    return copy_to_memory(*descriptor).map([](gxDescriptor&& copy) {
        std::string path = descriptor_path(copy.get());
        return InputFile{std::move(path), std::move(copy)};
    });
}

} // namespace mrtool
