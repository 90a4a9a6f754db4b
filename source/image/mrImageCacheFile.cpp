#include "mrImageCacheFile.h"

#include "mrGuard.h"
#include "mrSource.h"

#include "gxOpenFile.h"
#include "utConcat.h"

#include <algorithm>

namespace {

/// Explains why a line of the text part could not be read.
/// @param number  of the line, from 1
void explain_end(std::istream const& in, std::int64_t number, mrFault& fault)
{
    if (in.bad()) {
        fault.reason = "reading it failed before its end";
        return;
    }
    static_assert(mrImageCacheFile::max_line == 1023);
    fault.reason = in.eof() ? "the file ends here, without the empty line that ends the entries"
                            : "longer than 1,023 characters";
    fault.line = in.eof() ? std::max<std::int64_t>(number - 1, 1) : number;
    fault.part = utString(ut_concat("line ", fault.line));
}

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
    fault = {};
    return mr_guard(fault, mrFileMatBadContent, [&] {
        gxFile const file(source.open(fault));
        return file ? read_parts(file.get(), limits, keep_pixels, fault, remarks) : mrFileMatOpenFailed;
    });
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
    char buffer[max_line + 1];
    for (std::int64_t number = 1;; ++number) {
        in.getline(buffer, sizeof buffer);
        // The count includes a line feed that was read.
        auto const count = static_cast<std::size_t>(in.gcount());
        std::string_view const line(buffer, in.good() ? count - 1 : count);
        if (number == 1) {
            m_limits = mrCacheLine(line);
            m_has_limits = true;
        }
        if (in.fail()) {
            explain_end(in, number, fault);
            return 0;
        }
        if (number > 1 && line.empty())
            return 1;
        if (number > 1)
            m_lines.append(mrCacheLine(line));
    }
}
