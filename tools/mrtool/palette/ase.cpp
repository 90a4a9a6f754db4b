#include "ase.h"

#include "tally.h"
#include "utConcat.h"
#include "utUTF8.h"

#include "mrContainers.h"
#include "mrTypes.h"
#include "mrUtils.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace mrtool {

namespace {

constexpr std::string_view signature = "ASEF";

struct Broken
{
    std::size_t at;
    std::string words;
};

/// Takes numbers and names off a part of the file.
class Cursor
{
public:
    /// @param end  where the part ends, within @p bytes
    Cursor(std::string_view bytes, std::size_t at, std::size_t end) : m_bytes(bytes), m_at(at), m_end(end) {}

    std::size_t at() const { return m_at; }
    std::size_t left() const { return m_end - m_at; }

    /// A part of so many bytes, which this one goes past.
    /// @throws Broken when there are not so many
    Cursor part(std::size_t count, char const* what)
    {
        if (count > left())
            throw Broken{m_at, ut_concat(what, " takes ", count, " bytes, with ", left(), " left")};
        m_at += count;
        return {m_bytes, m_at - count, m_at};
    }

    std::string_view bytes(std::size_t count, char const* what)
    {
        Cursor const taken = part(count, what);
        return m_bytes.substr(taken.m_at, count);
    }

    std::uint32_t number(std::size_t count, char const* what)
    {
        std::uint32_t value = 0;
        for (char const byte : bytes(count, what))
            value = value << 8 | static_cast<unsigned char>(byte);
        return value;
    }

    float real(char const* what) { return std::bit_cast<float>(number(4, what)); }

private:
    std::string_view m_bytes;
    std::size_t m_at;
    std::size_t m_end;
};

constexpr std::uint32_t replacement = 0xfffd;

bool is_surrogate(std::uint32_t unit)
{
    return unit >= 0xd800 && unit < 0xe000;
}

/// Units of UTF-16 in UTF-8. The NUL at the end is left out.
/// @param faulty  set to true when a surrogate stands alone, which becomes U+FFFD
std::string to_utf8(Cursor units, bool& faulty)
{
    std::string made;
    auto const next = [&] { return units.left() > 0 ? units.number(2, "") : 0; };
    for (std::uint32_t unit = next(); unit != 0 || units.left() > 0;) {
        std::uint32_t const first = unit;
        unit = next();
        if (!is_surrogate(first)) {
            utUTF8::append(made, first);
        } else if (first < 0xdc00 && unit >= 0xdc00 && is_surrogate(unit)) {
            utUTF8::append(made, 0x10000 + ((first & 0x3ff) << 10) + (unit & 0x3ff));
            unit = next();
        } else {
            utUTF8::append(made, replacement);
            faulty = true;
        }
    }
    return made;
}

// ---- Colours

using Components = std::array<double, 4>;

unsigned char as_byte(double component)
{
    return static_cast<unsigned char>(std::lround(255.0 * std::clamp(component, 0.0, 1.0)));
}

giColour from_rgb(Components const& values)
{
    return {as_byte(values[0]), as_byte(values[1]), as_byte(values[2]), 0};
}

giColour from_gray(Components const& values)
{
    return {as_byte(values[0]), as_byte(values[0]), as_byte(values[0]), 0};
}

giColour from_cmyk(Components const& values)
{
    doublecoDList percentages;
    // What a float has of 20 % is a little more, and the library truncates.
    for (double const value : values)
        percentages.append(std::round(value * 100'000.0) / 1000.0);
    giColour colour;
    mrUtils::colour_from_components(mrColourEncodingCmyk, percentages, colour);
    return colour;
}

/// Red, green and blue of sRGB, which may lie outside of 0 to 1.
Components srgb_of_lab(Components const& lab)
{
    constexpr double white[] = {0.96422, 1.0, 0.82521};
    constexpr double matrix[3][3] = {{3.1338561, -1.6168667, -0.4906146},
                                     {-0.9787684, 1.9161415, 0.0334540},
                                     {0.0719453, -0.2289914, 1.4052427}};
    double const y = (100.0 * lab[0] + 16.0) / 116.0;
    double const cubes[] = {y + lab[1] / 500.0, y, y - lab[2] / 200.0};
    double xyz[3];
    for (int at = 0; at < 3; ++at) {
        double const each = cubes[at];
        // Below 6/29 the cube gives way to its tangent.
        xyz[at] = white[at] * (each > 6.0 / 29.0 ? each * each * each : 108.0 / 841.0 * (each - 4.0 / 29.0));
    }
    Components rgb{};
    for (std::size_t at = 0; at < 3; ++at) {
        double const linear = matrix[at][0] * xyz[0] + matrix[at][1] * xyz[1] + matrix[at][2] * xyz[2];
        rgb[at] = linear > 0.0031308 ? 1.055 * std::pow(linear, 1.0 / 2.4) - 0.055 : 12.92 * linear;
    }
    return rgb;
}

giColour from_lab(Components const& values)
{
    return from_rgb(srgb_of_lab(values));
}

struct Range
{
    double low;
    double high;
};

constexpr Range fraction{0.0, 1.0};
constexpr Range chroma{-128.0, 127.0};

struct Model
{
    std::string_view name;
    std::size_t count; ///< of components
    std::array<Range, 4> ranges;
    giColour (*convert)(Components const& values);
    char const* words; ///< how it was converted; null for what needs no words
};

constexpr Model models[] = {
    {"RGB ", 3, {fraction, fraction, fraction, fraction}, from_rgb, nullptr},
    {"CMYK",
     4,
     {fraction, fraction, fraction, fraction},
     from_cmyk,
     "converted from CMYK as the library does it, without a profile: "},
    {"LAB ", 3, {fraction, chroma, chroma, fraction}, from_lab, "converted from Lab under D50 to sRGB: "},
    {"GRAY", 1, {fraction, fraction, fraction, fraction}, from_gray, "converted from gray: "},
};

/// @return null for an unknown one
Model const* model_called(std::string_view name)
{
    std::string capital(name);
    for (char& letter : capital)
        letter = static_cast<char>(std::toupper(static_cast<unsigned char>(letter)));
    auto const found = std::find_if(std::begin(models), std::end(models),
                                    [&](Model const& each) { return each.name == capital; });
    return found == std::end(models) ? nullptr : found;
}

/// Whether the nearest byte is not that of the colour itself.
bool beyond_srgb(Components const& lab)
{
    Components const rgb = srgb_of_lab(lab);
    return std::any_of(rgb.begin(), rgb.begin() + 3,
                       [](double each) { return each < -0.5 / 255.0 || each > 255.5 / 255.0; });
}

// ---- Blocks

constexpr std::uint32_t colour_block = 0x0001;
constexpr std::uint32_t group_block = 0xc001;
constexpr std::uint32_t group_end_block = 0xc002;

constexpr std::uint32_t global_kind = 0;
constexpr std::uint32_t spot_kind = 1;
constexpr std::uint32_t plain_kind = 2;

class Reader
{
public:
    Reader(std::string_view bytes, ForeignPalette& palette)
        : m_file(bytes, signature.size(), bytes.size()), m_palette(palette)
    {}

    void read()
    {
        std::uint32_t const major = m_file.number(2, "the version");
        std::uint32_t const minor = m_file.number(2, "the version");
        if (major != 1 || minor != 0)
            throw Broken{signature.size(),
                         ut_concat("version ", major, ".", minor, ", and 1.0 is what can be read")};
        std::uint32_t const count = m_file.number(4, "the number of blocks");
        for (std::uint32_t number = 1; number <= count; ++number)
            read_block(number, count);
        tell();
    }

private:
    void read_block(std::uint32_t number, std::uint32_t count)
    {
        std::size_t const start = m_file.at();
        if (m_file.left() == 0)
            throw Broken{start, ut_concat("the file ends before block ", number, " of ", count)};
        try {
            std::uint32_t const type = m_file.number(2, "its type");
            std::uint32_t const length = m_file.number(4, "its length");
            take(type, m_file.part(length, "its content"), start);
        } catch (Broken& broken) {
            broken.words = ut_concat("block ", number, ": ", broken.words);
            throw;
        }
    }

    void take(std::uint32_t type, Cursor block, std::size_t start)
    {
        if (type == colour_block)
            take_colour(block);
        else if (type == group_block)
            m_groups.add(shown(take_name(block)));
        else if (type != group_end_block)
            m_unknown.add(ut_concat("at byte ", start));
        if ((type == colour_block || type == group_block) && block.left() > 0)
            m_surplus.add(ut_concat("at byte ", block.at()));
    }

    std::string take_name(Cursor& block)
    {
        std::size_t const units = block.number(2, "the length of its name");
        bool faulty = false;
        std::string name = to_utf8(block.part(2 * units, "its name"), faulty);
        if (faulty)
            m_faulty.add(shown(name));
        return name;
    }

    void take_colour(Cursor& block)
    {
        std::string name = take_name(block);
        std::string const example = shown_colour(name, m_palette.colours.size());
        std::size_t const start = block.at();
        std::string_view const called = block.bytes(4, "its colour model");
        Model const* const model = model_called(called);
        if (!model)
            throw Broken{start, ut_concat("its colour model is ", shown(called), ", none that can be read")};
        Components const values = take_components(block, *model, example);
        std::uint32_t const kind = block.number(2, "its kind");
        if (kind != plain_kind)
            (kind == global_kind ? m_global : kind == spot_kind ? m_spot : m_other_kind).add(example);
        m_converted[static_cast<std::size_t>(model - models)].add(example);
        if (model->convert == from_lab && beyond_srgb(values))
            m_beyond.add(example);
        m_palette.colours.push_back({std::move(name), model->convert(values)});
    }

    Components take_components(Cursor& block, Model const& model, std::string const& example)
    {
        Components values{};
        bool clipped = false;
        for (std::size_t at = 0; at < model.count; ++at) {
            std::size_t const start = block.at();
            double const value = block.real("a component");
            if (!std::isfinite(value))
                throw Broken{start, ut_concat("component ", at + 1, " of ", example, " is no finite number")};
            values[at] = std::clamp(value, model.ranges[at].low, model.ranges[at].high);
            clipped = clipped || values[at] != value;
        }
        if (clipped)
            m_clipped.add(example);
        return values;
    }

    void tell()
    {
        auto const tell_of = [](std::vector<std::string>& list, std::string_view words, Tally const& tally,
                                std::string_view things) {
            if (!tally.empty())
                list.push_back(ut_concat(words, tally.of(things)));
        };
        std::vector<std::string>& left_out = m_palette.left_out;
        std::vector<std::string>& notes = m_palette.notes;
        tell_of(left_out, "", m_groups, "group");
        tell_of(left_out, "the kind \"global\" of ", m_global, "colour");
        tell_of(left_out, "the kind \"spot\" of ", m_spot, "colour");
        tell_of(left_out, "an unknown kind of ", m_other_kind, "colour");
        tell_of(left_out, "further data in ", m_surplus, "block");
        tell_of(left_out, "", m_unknown, "unknown block");
        if (m_file.left() > 0)
            left_out.push_back(ut_concat(number_of(m_file.left(), "byte"), " behind the last block"));
        for (Model const& model : models)
            if (model.words)
                tell_of(notes, model.words, m_converted[static_cast<std::size_t>(&model - models)], "colour");
        tell_of(notes, "outside of sRGB and clipped to it: ", m_beyond, "colour");
        tell_of(notes, "with components out of their range and brought into it: ", m_clipped, "colour");
        tell_of(notes, "with faulty UTF-16, now U+FFFD: ", m_faulty, "name");
    }

    Cursor m_file;
    ForeignPalette& m_palette;
    Tally m_converted[std::size(models)];
    Tally m_groups, m_global, m_spot, m_other_kind, m_surplus, m_unknown, m_beyond, m_clipped, m_faulty;
};

} // namespace

bool is_swatch_exchange(std::string_view bytes)
{
    return bytes.starts_with(signature);
}

bool read_swatch_exchange(std::string_view bytes, ForeignPalette& palette, ForeignFault& fault)
{
    try {
        Reader(bytes, palette).read();
        return true;
    } catch (Broken const& broken) {
        fault.words = ut_concat("at byte ", broken.at, ": ", broken.words);
        return false;
    }
}

} // namespace mrtool
