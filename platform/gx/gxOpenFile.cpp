#include "gxOpenFile.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <string>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace {

/// @param file  none where opening failed, with the reason in errno
/// @return the file with its size, or none where it is no regular one
gxDescriptor check_regular(gxDescriptor file, off_t& size, utString& reason)
{
    struct stat status
    {};
    bool const known = file && ::fstat(file.get(), &status) == 0;
    int const error = errno;
    size = status.st_size;
    if (known && S_ISREG(status.st_mode))
        return file;
    if (known)
        reason = S_ISDIR(status.st_mode) ? "a folder, not a file" : "not a file";
    else
        reason = utString(std::generic_category().message(error));
    return gxDescriptor();
}

/// A file as it was when it was opened, behind a stream.
struct BoundedFile
{
    gxDescriptor file;
    off_t size;
    off_t at = 0;

    static ssize_t read(void* self, char* to, std::size_t count)
    {
        auto& that = *static_cast<BoundedFile*>(self);
        off_t const left = std::max<off_t>(that.size - that.at, 0);
        ssize_t got = 0;
        do
            got = ::pread(that.file.get(), to, std::min(count, static_cast<std::size_t>(left)), that.at);
        while (got < 0 && errno == EINTR);
        that.at += std::max<ssize_t>(got, 0);
        return got;
    }

    static int seek(void* self, off64_t* offset, int whence)
    {
        auto& that = *static_cast<BoundedFile*>(self);
        off_t const from = whence == SEEK_SET ? 0 : whence == SEEK_CUR ? that.at : that.size;
        off_t to = 0;
        if (__builtin_add_overflow(from, *offset, &to) || to < 0) {
            errno = EINVAL;
            return -1;
        }
        *offset = that.at = to;
        return 0;
    }

    static int close(void* self)
    {
        delete static_cast<BoundedFile*>(self);
        return 0;
    }
};

gxFile open_stream(gxDescriptor opened, utString& reason)
{
    off_t size = 0;
    gxDescriptor file = check_regular(std::move(opened), size, reason);
    if (!file)
        return nullptr;
    auto bounded = std::make_unique<BoundedFile>(BoundedFile{std::move(file), size});
    gxFile stream(::fopencookie(bounded.get(), "rb",
                                {BoundedFile::read, nullptr, BoundedFile::seek, BoundedFile::close}));
    if (stream)
        bounded.release(); // the stream's
    else
        reason = utString(std::generic_category().message(errno));
    return stream;
}

gxDescriptor open_for_reading(utString const& path)
{
    errno = EINVAL;
    return gxDescriptor(
        gx_has_nul(path) ? -1 : ::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC));
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

bool gx_has_nul(utString const& path)
{
    return path.view().find('\0') != std::string_view::npos;
}

gxDescriptor gx_open_regular(utString const& path, utString& reason)
{
    off_t size = 0;
    return check_regular(open_for_reading(path), size, reason);
}

gxFile gx_open_file(utString const& path, utString& reason)
{
    return open_stream(open_for_reading(path), reason);
}

gxFile gx_open_descriptor(int descriptor, utString& reason)
{
    return open_stream(gxDescriptor(::fcntl(descriptor, F_DUPFD_CLOEXEC, 0)), reason);
}

gxFile gx_open_memory(std::string_view bytes, utString& reason)
{
    // Only read: the mode forbids writing.
    gxFile file(::fmemopen(const_cast<char*>(bytes.data()), bytes.size(), "rb"));
    if (!file)
        reason = utString(std::generic_category().message(errno));
    return file;
}

gxFile gx_append_to_file(utString const& path)
{
    errno = EINVAL;
    return gxFile(gx_has_nul(path) ? nullptr : std::fopen(path.c_str(), "abe"));
}

gxFileStream::gxFileStream(std::FILE* file)
    : std::iostream(nullptr), m_buffer(std::make_unique<FileBuffer>(file))
{
    rdbuf(file ? m_buffer.get() : nullptr);
}

gxFileStream::~gxFileStream() = default;
