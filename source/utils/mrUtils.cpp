#include "mrUtils.h"

#include "mrColourPalette.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "gxOpenFile.h"
#include "gxPNG.h"
#include "ntFileOps.h"
#include "reMatcher.h"
#include "utAssert.h"
#include "utString.h"
#include "xmlUtils.h"

#include <algorithm>
#include <cctype>
#include <cstdint>
#include <cstdio>
#include <istream>
#include <memory>
#include <new>
#include <ostream>
#include <utility>

namespace {

utString const title_key = "Title";
utString const image_name_key = "DuctImageName";

/// Fewer bytes than these are the end of a block.
constexpr std::size_t probe_size = 10;

int append_image(utString const& key, dgDuctImage const* image, utString const& path)
{
    gxFile file = gx_append_to_file(path);
    if (!file || !image)
        return 0;
    utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
    texts[title_key] = xmlUtils::carried(key);
    texts[image_name_key] = xmlUtils::carried(image->name());
    if (!gxPNGWriterDuctImage::write_file(*image, file.get(), texts))
        return 0;
    // What the file takes no more may show on closing only.
    return std::fclose(file.release()) == 0;
}

/// How many pixels the images from @p start to the end of the file may have, with the file left at start.
/// @return -1 when the file has no such position
std::int64_t pixel_budget(std::FILE* file, int start)
{
    if (std::fseek(file, 0, SEEK_END) != 0)
        return -1;
    std::int64_t const size = std::ftell(file);
    if (size < 0 || std::fseek(file, start, SEEK_SET) != 0)
        return -1;
    // Bounded above too: a folder may claim any size.
    std::int64_t const bytes = std::clamp<std::int64_t>(size - start, 0, mrUtils::max_block_pixels);
    return mrUtils::max_block_pixels + bytes * mrUtils::max_pixels_per_byte;
}

/// 1 when the file has bytes for another image, which are left to be read.
int at_image(std::FILE* file)
{
    char probe[probe_size];
    return std::fread(probe, 1, probe_size, file) == probe_size &&
           std::fseek(file, -static_cast<long>(probe_size), SEEK_CUR) == 0;
}

struct Unreference
{
    void operator()(dgDuctImage* image) const { image->unreference(); }
};

using HeldImage = std::unique_ptr<dgDuctImage, Unreference>;

void store(HeldImage image, utString const& title, utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    dgDuctImage*& place = images[title];
    if (place)
        place->unreference();
    place = image.release();
}

/// Reads one image into the table, or drops it when it has no title.
/// @param budget  in pixels; what the image takes is taken off
int read_image(std::FILE* file, std::int64_t& budget, utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    utStringutStringcoTable texts(mrInitialSize, mrFillLimit);
    dgDuctImage* const read = gxPNGReaderDuctImage::read_file(
        file, texts, std::min<std::int64_t>(budget, gxPNGReaderDuctImage::max_pixels));
    if (!read)
        return 0;
    read->reference();
    HeldImage image(read);
    budget -= std::int64_t{image->width()} * image->height();

    utString const& name = texts.read(image_name_key);
    if (!name.empty())
        image->new_name(name.c_str());

    utString const& title = texts.read(title_key);
    if (!title.empty())
        store(std::move(image), title, images);
    return 1;
}

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

/// A line of a palette file, without its line end, has fewer characters than this.
constexpr std::size_t palette_line_size = 1024;

/// How the colours of one encoding are written. Groups of the pattern: the keyword, the components, the name.
struct PaletteLine
{
    mrColourEncoding encoding;
    char const* keyword;
    char const* pattern;
    char const* unexpected;
    int components;
    int most;
};

constexpr PaletteLine palette_lines[] = {
    {mrColourEncodingRgb8, "rgb8", "^(rgb8) +([0-9]+) +([0-9]+) +([0-9]+) ?(.*)$", "Expected rgb8!", 3, 255},
    {mrColourEncodingCmy8, "cmy8", "^(cmy8) +([0-9]+) +([0-9]+) +([0-9]+) ?(.*)$", "Expected cmy8!", 3, 255},
    {mrColourEncodingCmyk, "cmyk", "^(cmyk) +([0-9]+) +([0-9]+) +([0-9]+) +([0-9]+) ?(.*)$", "Expected cmyk!",
     4, 100}};

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
    explicit PaletteLineReader(PaletteLine const& kind) : m_kind(kind), m_matcher(kind.pattern)
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

mrPaletteFileError read_palette_lines(std::istream& in, mrColourPalette& palette)
{
    PaletteLineReader readers[] = {PaletteLineReader(palette_lines[0]), PaletteLineReader(palette_lines[1]),
                                   PaletteLineReader(palette_lines[2])};
    char buffer[palette_line_size];
    while (in.getline(buffer, sizeof buffer)) {
        utString const line = without_comment(buffer);
        if (line.empty())
            continue;
        auto const reader = std::find_if(std::begin(readers), std::end(readers),
                                         [&](auto& each) { return each.match(line); });
        if (reader == std::end(readers))
            return mrPaletteFileBadFormat;
        mrPaletteFileError const error = append_colour(*reader, palette);
        if (error != mrPaletteFileOK)
            return error;
    }
    return mrPaletteFileOK;
}

} // namespace

int mrUtils::write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, utString const& path)
{
    for (auto const& [key, image] : images)
        if (!append_image(key, image, path))
            return 0;
    return 1;
}

int mrUtils::read_images(utString const& path, int start, utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    utString reason;
    gxFile const file = gx_open_file(path, reason);
    if (!file)
        return 0;
    std::int64_t budget = pixel_budget(file.get(), start);
    if (budget < 0)
        return 0;
    try {
        while (at_image(file.get()))
            if (!read_image(file.get(), budget, images))
                return 0;
    } catch (std::bad_alloc const&) {
        return 0;
    }
    return std::ferror(file.get()) ? 0 : 1;
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
    UT_REQUIRE(palette.empty(), "argument out of range | Args");
    QuietStream const quiet(in);
    try {
        return read_palette_lines(in, palette);
    } catch (std::bad_alloc const&) {
        return mrPaletteFileBadFormat;
    }
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
