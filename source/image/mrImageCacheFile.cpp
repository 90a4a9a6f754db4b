#include "mrImageCacheFile.h"

#include "mrSource.h"

#include "gxOpenFile.h"
#include "utConcat.h"

#include <algorithm>
#include <new>

namespace {

/// The lines of a file's text part.
class Lines
{
public:
    explicit Lines(std::istream& in) : m_in(in) {}

    /// Reads the next line, or what there is of one that is too long or ends with the file.
    /// @return false, after a fault, when that leaves the stream failed
    bool read_next(mrFault& fault)
    {
        char buffer[mrImageCacheFile::max_line + 1];
        m_in.getline(buffer, sizeof buffer);
        ++m_number;
        // The count includes the line feed, where there was one.
        auto const count = static_cast<std::size_t>(m_in.gcount());
        m_line.assign(buffer, m_in.good() ? count - 1 : count);
        if (!m_in)
            explain(fault);
        return !m_in.fail();
    }

    std::string const& line() const { return m_line; }

private:
    void explain(mrFault& fault) const
    {
        if (m_in.bad()) {
            fault.reason = "reading it failed before its end";
        } else if (m_in.eof()) {
            fault.reason = "the file ends here, without the empty line that ends the entries";
            fault.line = std::max<std::int64_t>(m_number - 1, 1);
        } else {
            fault.reason = "longer than 1,023 characters";
            static_assert(mrImageCacheFile::max_line == 1023);
            fault.line = m_number;
        }
    }

    std::istream& m_in;
    std::string m_line;
    std::int64_t m_number = 0;
};

} // namespace

mrCacheLine::mrCacheLine(std::string_view line)
{
    std::size_t const space = std::min(line.find(' '), line.size());
    std::size_t const rest = std::min(line.find_first_not_of(' ', space), line.size());
    int const first_parsed = utString(line.substr(0, space)).parse(first);
    int const second_parsed = utString(line.substr(rest)).parse(second);
    two_fields = space > 0 && space + 1 < line.size();
    two_integers = first_parsed && second_parsed;
}

std::string mrCacheLine::print(int first, int second)
{
    return ut_concat(first, " ", second, "\n");
}

int mrImageCacheFile::parse_hash(utString const& title, int& hash)
{
    hash = 0;
    return title.parse(hash);
}

mrFileMatReadStatus mrImageCacheFile::read(mrSource const& source, mrReadLimits const& limits,
                                           bool keep_pixels, mrFault& fault, mrFaultcoDList* remarks)
{
    try {
        gxFile const file(source.open(fault));
        return file ? read_parts(file.get(), limits, keep_pixels, fault, remarks) : mrFileMatOpenFailed;
    } catch (std::bad_alloc const&) {
        fault = {};
        fault.reason = "not enough memory";
        return mrFileMatBadContent;
    }
}

mrFileMatReadStatus mrImageCacheFile::read_parts(std::FILE* file, mrReadLimits const& limits,
                                                 bool keep_pixels, mrFault& fault, mrFaultcoDList* remarks)
{
    gxFileStream in(file);
    if (!read_text(in, fault))
        return mrFileMatBadContent;
    mrImageBlock block(file, in.tellg(), limits);
    auto const store = [&](mrBlockImage& image) {
        if (!keep_pixels)
            image.image.reset();
        bool const replaces = m_images.find(image.title) != nullptr;
        m_images[image.title] = std::move(image);
        return replaces;
    };
    if (block.read_titled(store, remarks))
        return mrFileMatReadOK;
    fault = block.fault();
    return mrFileMatBadContent;
}

int mrImageCacheFile::read_text(std::istream& in, mrFault& fault)
{
    Lines lines(in);
    bool whole = lines.read_next(fault);
    m_limits = mrCacheLine(lines.line());
    while (whole && (whole = lines.read_next(fault)) && !lines.line().empty())
        m_lines.append(mrCacheLine(lines.line()));
    return whole;
}
