#include "mrUtils.h"

#include "mrColourPalette.h"
#include "mrGuard.h"
#include "mrImageBlock.h"
#include "mrOutput.h"
#include "mrSource.h"
#include "mrTarget.h"

#include "giColour.h"
#include "gxOpenFile.h"
#include "ntFileOps.h"
#include "reMatcher.h"
#include "utAssert.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

using Images = utStringdgDuctImagecoTablePtrcoPtrcoTable;

/// Adds up the characters, each from -128 to 127, in 32 bits.
int sum_characters(utString const& text)
{
    std::uint32_t sum = 0;
    for (char character : text.view())
        sum += static_cast<std::uint32_t>(static_cast<signed char>(character));
    return static_cast<int>(sum);
}

unsigned int join_parts(int high, int middle, int low)
{
    auto const reduced = [](int part) { return static_cast<unsigned int>(part % 255); };
    return reduced(high) << 16 | reduced(middle) << 8 | reduced(low);
}

/// Returns the low eight bits of the truncated number, 0 for one beyond an int.
unsigned char truncate_to_byte(double value)
{
    bool const fits = value > -2147483649.0 && value < 2147483648.0;
    return static_cast<unsigned char>(fits ? static_cast<int>(value) : 0);
}

unsigned char invert_to_byte(double value)
{
    return static_cast<unsigned char>(255 - truncate_to_byte(value));
}

giColour convert_cmyk(doublecoDList const& values)
{
    double const black = values[3] / 100.0;
    if (black == 1.0)
        return giColour();
    auto const convert = [black](double percentage) {
        double const ink = percentage / 100.0 * (1.0 - black) + black;
        return truncate_to_byte((1.0 - ink) * 255.0);
    };
    return giColour(convert(values[0]), convert(values[1]), convert(values[2]), 0);
}

/// A line of a palette file with a colour of one encoding. Groups of the pattern: the keyword, the components, the name.
struct PaletteLine
{
    mrColourEncoding encoding;
    char const* keyword;
    char const* pattern;
    char const* unexpected; ///< the report of another keyword
    int components;         ///< their number
    int most;               ///< the largest component; the smallest is 0
};

constexpr PaletteLine palette_lines[] = {
    {mrColourEncodingRgb8, "rgb8", "^(rgb8) +([0-9]+) +([0-9]+) +([0-9]+) ?(.*)$", "Expected rgb8!", 3, 255},
    {mrColourEncodingCmy8, "cmy8", "^(cmy8) +([0-9]+) +([0-9]+) +([0-9]+) ?(.*)$", "Expected cmy8!", 3, 255},
    {mrColourEncodingCmyk, "cmyk", "^(cmyk) +([0-9]+) +([0-9]+) +([0-9]+) +([0-9]+) ?(.*)$", "Expected cmyk!",
     4, 100}};

utString trim_spaces(utString const& text)
{
    return text.remove_leading_chars(" ").remove_trailing_chars(" ");
}

/// Drops the comment and the spaces around the rest.
utString strip_line(utString line)
{
    std::ptrdiff_t const comment = line.locate_substring("#");
    if (comment >= 0)
        line.remove_sub_string(static_cast<std::size_t>(comment), line.length());
    return trim_spaces(line);
}

/// Reads lines with colours of one encoding.
class PaletteLineReader
{
public:
    explicit PaletteLineReader(PaletteLine const& kind) : m_kind(kind), m_matcher(kind.pattern)
    {
        utString error;
        int position = 0;
        UT_REQUIRE(m_matcher.compile(0, error, position), "Invalid matcher!");
    }

    /// Returns 1 when the line is of this encoding; the functions below then read it.
    int match(utString const& line) { return m_matcher.match(line, 0); }

    mrPaletteFileError read_components(doublecoDList& components) const
    {
        UT_REQUIRE(m_matcher.get_substring(1) == m_kind.keyword, m_kind.unexpected);
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

    /// Returns an invalid string for a colour without a name.
    utString read_name() const
    {
        utString name = trim_spaces(m_matcher.get_substring(m_kind.components + 2));
        if (name.empty())
            name.set_invalid();
        return name;
    }

    mrColourEncoding encoding() const { return m_kind.encoding; }

private:
    PaletteLine const& m_kind;
    reMatcher m_matcher;
};

mrPaletteFileError append_colour(PaletteLineReader const& line, mrColourPalette& palette)
{
    doublecoDList components;
    mrPaletteFileError const error = line.read_components(components);
    if (error != mrPaletteFileOK)
        return error;
    utString const name = line.read_name();
    int index = -1;
    if (!name.invalid() && palette.find_colour(name, index))
        return mrPaletteFileDuplicateName;
    palette.append(name, line.encoding(), components);
    return mrPaletteFileOK;
}

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
    char buffer[mrUtils::max_palette_line + 1];
    while (++last.number, in.getline(buffer, sizeof buffer)) {
        utString const line = strip_line(buffer);
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
    // The stream throws nothing meanwhile.
    std::ios::iostate const exceptions = in.exceptions();
    in.exceptions(std::ios::goodbit);
    mrPaletteFileError error = mrPaletteFileOK;
    try {
        error = read_palette_lines(in, palette, last);
    } catch (std::bad_alloc const&) {
        error = mrPaletteFileBadFormat;
    }
    try {
        in.exceptions(exceptions);
    } catch (std::ios::failure const&) {
        // The stream's state shows the failure.
    }
    return error;
}

mrPaletteFileError read_line(std::string const& line, mrColourPalette& palette)
{
    std::istringstream in(line);
    return mrUtils::read_pcp(in, palette);
}

bool is_well_formed(std::string const& line)
{
    mrColourPalette palette;
    return read_line(line, palette) != mrPaletteFileBadFormat;
}

/// A common mistake, and its correction.
struct Flaw
{
    void (*mend)(std::string& line);
    char const* words;
};

constexpr Flaw flaws[] = {
    {[](std::string& line) { line = std::string(utUTF8::without_byte_order_mark(line)); },
     "it begins with a byte order mark (EF BB BF), which must go"},
    {[](std::string& line) { std::replace(line.begin(), line.end(), '\t', ' '); },
     "it has a tab where only spaces may be"},
    {[](std::string& line) {
         for (char& letter : line)
             letter = static_cast<char>(std::tolower(static_cast<unsigned char>(letter)));
     },
     "its keyword is not in small letters"},
    {[](std::string& line) { std::erase(line, '\r'); },
     "it has a carriage return inside; lines end with a line feed, or both"},
};

utString explain_format(std::string const& line)
{
    if (line.find_first_not_of(" \r") == line.npos)
        return "nothing but a carriage return, which makes no empty line: write # before it, or end the "
               "lines of the file with line feeds alone";
    // Running out of memory has the status of a bad line.
    if (is_well_formed(line) || !is_well_formed("rgb8 0 0 0"))
        return "not enough memory";
    for (Flaw const& flaw : flaws) {
        std::string mended = line;
        flaw.mend(mended);
        if (is_well_formed(mended))
            return flaw.words;
    }
    return "not rgb8 or cmy8 and three whole numbers, nor cmyk and four, or a number is far too large";
}

utString explain_duplicate(std::string const& line)
{
    mrColourPalette palette;
    read_line(line, palette);
    if (palette.empty())
        return "not enough memory";
    utString name;
    palette.colour(0, name);
    return utString(ut_concat("an earlier line has the name ", ut_quote_short(name.view()), " already"));
}

/// Explains why the reading stopped at a line, given without its line feed.
utString explain_line(std::string const& line, mrPaletteFileError error)
{
    switch (error) {
    case mrPaletteFileDuplicateName:
        return explain_duplicate(line);
    case mrPaletteFileOutOfRange:
        return "a number is out of its range, 0 to 255 in rgb8 and cmy8, 0 to 100 in cmyk";
    default:
        return explain_format(line);
    }
}

mrPaletteFileError read_palette_source(mrSource const& source, mrColourPalette& palette, mrFault& fault)
{
    gxFile const file(source.open(fault));
    if (!file)
        return mrPaletteFileOpenFailed;
    gxFileStream in(file.get());
    LastLine last;
    mrPaletteFileError const error = read_palette(in, palette, last);
    // A failing stream ends the palette as its end does.
    if (error == mrPaletteFileOK && in.bad()) {
        fault.reason = "reading it failed before its end";
        return error;
    }
    if (error == mrPaletteFileOK && in.eof())
        return error;
    if (error == mrPaletteFileOK)
        fault.reason = "longer than 1,023 characters; it and the lines after it are not read";
    else if (last.bytes.empty())
        fault.set_out_of_memory(); // before there was a bad line
    else
        fault.reason = explain_line(last.bytes, error);
    static_assert(mrUtils::max_palette_line == 1023);
    fault.line = last.number;
    fault.part = utString(ut_concat("line ", last.number));
    return error;
}

} // namespace

int mrUtils::write_images(Images const& images, utString const& path)
{
    mrFault ignored;
    return mr_guard(ignored, 0, [&] { return write_images(images, mrTarget::to_path(path), ignored); });
}

int mrUtils::write_images(Images const& images, mrTarget const& target, mrFault& fault)
{
    fault = {};
    if (images.empty())
        return 1;
    return mr_guard(fault, 0, [&] {
        if (!mrImageBlock::check_titles(images, fault))
            return 0;
        mrOutput out(target, mrOutput::Mode::append, fault);
        bool const written =
            out.file() && mrImageBlock::write(images, out.file(), fault) == mrImageBlock::Written::all;
        return out.file() && out.close(fault) && written ? 1 : 0;
    });
}

int mrUtils::read_images(utString const& path, int start, Images& images)
{
    mrFault ignored;
    return mr_guard(ignored, 0,
                    [&] { return read_images(mrSource::from_path(path), start, images, {}, ignored); });
}

int mrUtils::read_images(mrSource const& source, std::int64_t start, Images& images,
                         mrReadLimits const& limits, mrFault& fault, mrFaultcoDList* remarks)
{
    fault = {};
    return mr_guard(fault, 0, [&] {
        gxFile const file(source.open(fault));
        if (!file)
            return 0;
        mrImageBlock block(file.get(), start, limits);
        int const read = block.read_into(images, remarks);
        fault = block.fault();
        return read;
    });
}

unsigned int mrUtils::file_hash(utString const& path)
{
    bool const there = ntFileOps::exists(path) != 0;
    UT_REQUIRE(there, "argument out of range | Args");
    // Not asked for what is not there: up to a NUL the path may be another file's.
    ntFileDate const date = there ? ntFileOps::file_modified_date(path.c_str()) : ntFileDate();
    int const size = there ? ntFileOps::file_size(path.c_str()) : 0;
    int const sum_of_date =
        date.year() + date.month() + date.day() + date.hour() + date.minute() + date.seconds();
    return join_parts(sum_characters(path), sum_of_date, size);
}

unsigned int mrUtils::symbol_defn_hash(int first, int second, utString text)
{
    UT_REQUIRE(first >= 0, "argument out of range | Args");
    UT_REQUIRE(second >= 0, "argument out of range | Args");
    UT_REQUIRE(!text.empty(), "argument out of range | Args");
    return join_parts(first, second, sum_characters(text));
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
        colour = giColour(truncate_to_byte(values[0]), truncate_to_byte(values[1]),
                          truncate_to_byte(values[2]), 0);
        return;
    case mrColourEncodingCmy8:
        UT_REQUIRE(values.size() == 3, "Expected 3 component values!");
        colour = giColour(invert_to_byte(values[0]), invert_to_byte(values[1]), invert_to_byte(values[2]), 0);
        return;
    case mrColourEncodingCmyk:
        UT_REQUIRE(values.size() == 4, "Expected 4 component values!");
        colour = convert_cmyk(values);
        return;
    default:
        ut_report_assert_failure(__FILE__, __LINE__, "unknown enumerator constant | Invalid format!");
    }
}

char const* mrUtils::find_palette_keyword(mrColourEncoding encoding)
{
    auto const line = std::find_if(std::begin(palette_lines), std::end(palette_lines),
                                   [&](PaletteLine const& each) { return each.encoding == encoding; });
    return line == std::end(palette_lines) ? nullptr : line->keyword;
}

mrPaletteFileError mrUtils::read_pcp(std::istream& in, mrColourPalette& palette)
{
    LastLine ignored;
    return read_palette(in, palette, ignored);
}

mrPaletteFileError mrUtils::read_pcp(mrSource const& source, mrColourPalette& palette, mrFault& fault)
{
    fault = {};
    return mr_guard(fault, mrPaletteFileBadFormat,
                    [&] { return read_palette_source(source, palette, fault); });
}

std::ostream& mrUtils::write_pcp(mrColourPalette const& palette, std::ostream& out)
{
    mr_guard_stream(out, [&] {
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
    });
    return out;
}
