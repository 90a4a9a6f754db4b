#include "mrUtils.h"

#include "mrColourPalette.h"
#include "mrFault.h"
#include "mrImageBlock.h"
#include "mrOutput.h"
#include "mrPaletteLine.h"
#include "mrSource.h"
#include "mrTarget.h"

#include "giColour.h"
#include "gxOpenFile.h"
#include "ntFileOps.h"
#include "reMatcher.h"
#include "utAssert.h"
#include "utConcat.h"
#include "utString.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <istream>
#include <new>
#include <ostream>

namespace {

using Images = utStringdgDuctImagecoTablePtrcoPtrcoTable;

/// The sum of the characters, each from -128 to 127, on 32 bits.
int sum_of_characters(utString const& text)
{
    std::uint32_t sum = 0;
    for (char character : text.view())
        sum += static_cast<std::uint32_t>(static_cast<signed char>(character));
    return static_cast<int>(sum);
}

unsigned int joined(int high, int middle, int low)
{
    auto const reduced = [](int part) { return static_cast<unsigned int>(part % 255); };
    return reduced(high) << 16 | reduced(middle) << 8 | reduced(low);
}

/// The low eight bits of the number truncated, 0 where that fits no int.
unsigned char low_byte(double value)
{
    bool const fits = value > -2147483649.0 && value < 2147483648.0;
    return static_cast<unsigned char>(fits ? static_cast<int>(value) : 0);
}

unsigned char cmy_channel(double value)
{
    return static_cast<unsigned char>(255 - low_byte(value));
}

/// @param black  as a fraction
unsigned char cmyk_channel(double percentage, double black)
{
    double const ink = percentage / 100.0 * (1.0 - black) + black;
    return low_byte((1.0 - ink) * 255.0);
}

giColour from_cmyk(doublecoDList const& values)
{
    double const black = values[3] / 100.0;
    if (black == 1.0)
        return giColour();
    return giColour(cmyk_channel(values[0], black), cmyk_channel(values[1], black),
                    cmyk_channel(values[2], black), 0);
}

/// Room for a line of a palette file and the NUL after it.
constexpr std::size_t palette_line_size = mrUtils::max_palette_line + 1;

/// How the colours of one encoding are written.
struct PaletteLine
{
    mrColourEncoding encoding;
    int components;
    int most; ///< that a component may be; the least is 0
};

constexpr PaletteLine palette_lines[] = {
    {mrColourEncodingRgb8, 3, 255}, {mrColourEncodingCmy8, 3, 255}, {mrColourEncodingCmyk, 4, 100}};

utString find_keyword(mrColourEncoding encoding)
{
    utString keyword;
    mrTypes::print(encoding, keyword);
    return keyword;
}

/// Groups: the keyword, the components, the name.
utString make_pattern(PaletteLine const& kind)
{
    utString pattern = "^(";
    (pattern += find_keyword(kind.encoding)) += ')';
    for (int i = 0; i < kind.components; ++i)
        pattern += " +([0-9]+)";
    return pattern += " ?(.*)$";
}

utString without_spaces_around(utString const& text)
{
    return text.remove_leading_chars(" ").remove_trailing_chars(" ");
}

/// What counts of a line.
utString without_comment(utString line)
{
    std::ptrdiff_t const comment = line.locate_substring("#");
    if (comment >= 0)
        line.remove_sub_string(static_cast<std::size_t>(comment), line.length());
    return without_spaces_around(line);
}

/// Takes the colours of one encoding out of lines.
class PaletteLineReader
{
public:
    explicit PaletteLineReader(PaletteLine const& kind)
        : m_kind(kind), m_keyword(find_keyword(kind.encoding)), m_matcher(make_pattern(kind))
    {
        utString error;
        int position = 0;
        UT_REQUIRE(m_matcher.compile(0, error, position), "Invalid matcher!");
    }

    /// 1 when the line is of this encoding; the two below are about it then.
    int match(utString const& line)
    {
        m_count = m_matcher.match(line, 0);
        return m_count >= m_kind.components + 2;
    }

    mrPaletteFileError read_components(doublecoDList& components) const
    {
        UT_REQUIRE(m_matcher.get_substring(1) == m_keyword, utString(ut_concat("Expected ", m_keyword, "!")));
        for (int i = 0; i < m_kind.components; ++i) {
            int value = 0;
            if (!m_matcher.get_substring(i + 2).parse(value))
                return mrPaletteFileBadFormat;
            if (!gsTriUtils::in_range_inclusive(value, 0, m_kind.most))
                return mrPaletteFileOutOfRange;
            components.append(value);
        }
        return mrPaletteFileOK;
    }

    /// Invalid when there is none.
    utString name() const
    {
        utString name;
        if (m_count == m_kind.components + 3)
            name = without_spaces_around(m_matcher.get_substring(m_kind.components + 2));
        if (name.empty())
            name.set_invalid();
        return name;
    }

    mrColourEncoding encoding() const { return m_kind.encoding; }

private:
    PaletteLine const& m_kind;
    utString m_keyword;
    reMatcher m_matcher;
    int m_count = 0;
};

mrPaletteFileError append_colour(PaletteLineReader const& line, mrColourPalette& palette)
{
    doublecoDList components;
    mrPaletteFileError const error = line.read_components(components);
    if (error != mrPaletteFileOK)
        return error;
    utString const name = line.name();
    int index = -1;
    if (!name.invalid() && palette.find_colour(name, index))
        return mrPaletteFileDuplicateName;
    palette.append(name, line.encoding(), components);
    return mrPaletteFileOK;
}

/// Keeps a stream from throwing what it was told to throw, for as long as this lives.
class QuietStream
{
public:
    explicit QuietStream(std::istream& in) : m_in(in), m_exceptions(in.exceptions())
    {
        m_in.exceptions(std::ios::goodbit);
    }

    ~QuietStream()
    {
        try {
            m_in.exceptions(m_exceptions);
        } catch (std::ios_base::failure const&) {
            // It is as it was told to be; that it has failed, its state says.
        }
    }

    QuietStream(QuietStream const&) = delete;
    QuietStream& operator=(QuietStream const&) = delete;

private:
    std::istream& m_in;
    std::ios::iostate const m_exceptions;
};

/// The line of a palette file that was read last.
struct LastLine
{
    std::int64_t number = 0;
    std::string bytes; ///< without its line feed
};

mrPaletteFileError read_palette_lines(std::istream& in, mrColourPalette& palette, LastLine& last)
{
    PaletteLineReader readers[] = {PaletteLineReader(palette_lines[0]), PaletteLineReader(palette_lines[1]),
                                   PaletteLineReader(palette_lines[2])};
    char buffer[palette_line_size];
    while (++last.number, in.getline(buffer, sizeof buffer)) {
        utString const line = without_comment(buffer);
        if (line.empty())
            continue;
        auto const reader = std::find_if(std::begin(readers), std::end(readers),
                                         [&](auto& each) { return each.match(line); });
        mrPaletteFileError const error =
            reader == std::end(readers) ? mrPaletteFileBadFormat : append_colour(*reader, palette);
        if (error == mrPaletteFileOK)
            continue;
        last.bytes.assign(buffer, static_cast<std::size_t>(in.gcount() - (in.eof() ? 0 : 1)));
        return error;
    }
    return mrPaletteFileOK;
}

mrPaletteFileError read_palette(std::istream& in, mrColourPalette& palette, LastLine& last)
{
    UT_REQUIRE(palette.empty(), "argument out of range | Args");
    QuietStream const quiet(in);
    try {
        return read_palette_lines(in, palette, last);
    } catch (std::bad_alloc const&) {
        return mrPaletteFileBadFormat;
    }
}

} // namespace

int mrUtils::write_images(Images const& images, utString const& path)
{
    mrFault fault;
    return write_images(images, mrTarget::to_path(path), fault);
}

int mrUtils::write_images(Images const& images, mrTarget const& target, mrFault& fault)
{
    fault = {};
    if (images.empty())
        return 1;
    mrOutput out(target, mrOutput::Mode::append, fault);
    if (!out.file())
        return 0;
    int const written = mrImageBlock::write(images, out.file(), fault);
    return out.close(fault) && written;
}

int mrUtils::read_images(utString const& path, int start, Images& images)
{
    mrFault fault;
    return read_images(mrSource::from_path(path), start, images, {}, fault);
}

int mrUtils::read_images(mrSource const& source, std::int64_t start, Images& images,
                         mrReadLimits const& limits, mrFault& fault, mrFaultcoDList* remarks)
{
    fault = {};
    gxFile const file(source.open(fault));
    if (!file)
        return 0;
    mrImageBlock block(file.get(), start, limits);
    int const read = block.read_into(images, remarks);
    fault = block.fault();
    return read;
}

unsigned int mrUtils::file_hash(utString const& path)
{
    UT_REQUIRE(ntFileOps::exists(path), "argument out of range | Args");
    ntFileDate const date = ntFileOps::file_modified_date(path.c_str());
    int const sum_of_date =
        date.year() + date.month() + date.day() + date.hour() + date.minute() + date.seconds();
    return joined(sum_of_characters(path), sum_of_date, ntFileOps::file_size(path.c_str()));
}

unsigned int mrUtils::symbol_defn_hash(int first, int second, utString text)
{
    UT_REQUIRE(first >= 0, "argument out of range | Args");
    UT_REQUIRE(second >= 0, "argument out of range | Args");
    UT_REQUIRE(!text.empty(), "argument out of range | Args");
    return joined(first, second, sum_of_characters(text));
}

void mrUtils::standardize_path_name(utString& path)
{
    UT_REQUIRE(!path.empty(), "Args");
    path.convert(std::tolower);
    ntFileOps::back_slash_to_proper_ones(path);
}

void mrUtils::colour_from_components(mrColourEncoding encoding, doublecoDList& values, giColour& colour)
{
    UT_REQUIRE(encoding != mrColourEncodingNone, "Invalid format!");
    switch (encoding) {
    case mrColourEncodingRgb8:
        UT_REQUIRE(values.size() == 3, "Expected 3 component values!");
        colour = giColour(low_byte(values[0]), low_byte(values[1]), low_byte(values[2]), 0);
        return;
    case mrColourEncodingCmy8:
        UT_REQUIRE(values.size() == 3, "Expected 3 component values!");
        colour = giColour(cmy_channel(values[0]), cmy_channel(values[1]), cmy_channel(values[2]), 0);
        return;
    case mrColourEncodingCmyk:
        UT_REQUIRE(values.size() == 4, "Expected 4 component values!");
        colour = from_cmyk(values);
        return;
    default:
        ut_report_assert_failure(__FILE__, __LINE__, "unknown enumerator constant | Invalid format!");
    }
}

mrPaletteFileError mrUtils::read_pcp(std::istream& in, mrColourPalette& palette)
{
    LastLine ignored;
    return read_palette(in, palette, ignored);
}

mrPaletteFileError mrUtils::read_pcp(mrSource const& source, mrColourPalette& palette, mrFault& fault)
{
    fault = {};
    gxFile const file(source.open(fault));
    if (!file)
        return mrPaletteFileOpenFailed;
    gxFileStream in(file.get());
    LastLine last;
    mrPaletteFileError const error = read_palette(in, palette, last);
    if (error != mrPaletteFileOK) {
        fault.line = last.number;
        // Memory may run out before there is a bad line.
        fault.reason = last.bytes.empty() ? "not enough memory" : mr_explain_palette_line(last.bytes, error);
    } else if (in.bad()) {
        fault.reason = "reading it failed before its end";
        return mrPaletteFileBadFormat;
    } else if (!in.eof()) {
        fault.line = last.number;
        fault.reason = "longer than 1,023 characters; it and the lines after it are not read";
        static_assert(max_palette_line == 1023);
    }
    return error;
}

std::ostream& mrUtils::write_pcp(mrColourPalette const& palette, std::ostream& out)
{
    for (int index = 0; index < palette.size(); ++index) {
        utString name;
        giColour const& colour = palette.colour(index, name);
        utString line = "rgb8";
        for (unsigned char const channel : {colour.red(), colour.green(), colour.blue()})
            (line += ' ').append_integer(channel);
        if (!name.invalid())
            (line += ' ') += name;
        out.write(line.c_str(), static_cast<std::streamsize>(line.length())) << std::endl;
    }
    return out;
}
