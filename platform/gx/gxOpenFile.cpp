#include "gxOpenFile.h"

#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

bool has_nul(utString const& path)
{
    return path.view().find('\0') != std::string_view::npos;
}

/// @param descriptor  below 0 where opening failed, with the reason in errno; closed here on failure
gxFile open_regular(int descriptor, utString& reason)
{
    struct stat status
    {};
    bool const known = descriptor >= 0 && ::fstat(descriptor, &status) == 0;
    gxFile file(known && S_ISREG(status.st_mode) ? ::fdopen(descriptor, "rb") : nullptr);
    if (file)
        return file;
    int const error = errno;
    // Before words are made: they may find no memory.
    if (descriptor >= 0)
        ::close(descriptor);
    if (known && S_ISDIR(status.st_mode))
        reason = "a folder, not a file";
    else if (known && !S_ISREG(status.st_mode))
        reason = "not a file";
    else
        reason = utString(std::generic_category().message(error));
    return nullptr;
}

/// The buffer between a stream and its file.
class FileBuffer : public std::streambuf
{
public:
    explicit FileBuffer(std::FILE* file) : m_file(file) {}

private:
    int_type underflow() override
    {
        std::size_t const count = std::fread(m_bytes, 1, sizeof m_bytes, m_file);
        setg(m_bytes, m_bytes, m_bytes + count);
        // The stream takes an exception as a failure, and goes on to tell it from the end of the file.
        if (count == 0 && std::ferror(m_file))
            throw std::ios::failure("reading failed");
        return count == 0 ? traits_type::eof() : traits_type::to_int_type(m_bytes[0]);
    }

    int_type overflow(int_type character) override
    {
        bool const nothing = traits_type::eq_int_type(character, traits_type::eof());
        if (!nothing && std::fputc(character, m_file) == EOF)
            return traits_type::eof();
        return traits_type::not_eof(character);
    }

    std::streamsize xsputn(char const* text, std::streamsize length) override
    {
        return static_cast<std::streamsize>(std::fwrite(text, 1, static_cast<std::size_t>(length), m_file));
    }

    int sync() override { return std::fflush(m_file) == 0 ? 0 : -1; }

    /// Tells where reading stands; goes nowhere.
    pos_type seekoff(off_type offset, std::ios::seekdir way, std::ios::openmode) override
    {
        if (offset != 0 || way != std::ios::cur)
            return off_type(-1);
        long const here = std::ftell(m_file);
        return here < 0 ? off_type(-1) : here - (egptr() - gptr());
    }

    std::FILE* m_file;
    char m_bytes[std::size_t{1} << 14];
};

} // namespace

gxFile gx_open_file(utString const& path, utString& reason)
{
    errno = EINVAL;
    return open_regular(
        has_nul(path) ? -1 : ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC), reason);
}

gxFile gx_open_descriptor(int descriptor, utString& reason)
{
    gxFile file = open_regular(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0), reason);
    if (file)
        std::rewind(file.get());
    return file;
}

gxFile gx_open_memory(std::string_view bytes, utString& reason)
{
    // Only read: the mode forbids writing.
    gxFile file(::fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb"));
    if (!file)
        reason = utString(std::generic_category().message(errno));
    return file;
}

gxFile gx_create_file(utString const& path, char const* mode)
{
    return gxFile(has_nul(path) ? nullptr : std::fopen(path.c_str(), mode));
}

gxFileStream::gxFileStream(std::FILE* file)
    : std::iostream(nullptr), m_buffer(std::make_unique<FileBuffer>(file))
{
    rdbuf(file ? m_buffer.get() : nullptr);
}

gxFileStream::~gxFileStream() = default;
