#include "ase.h"

#include "tally.h"
#include "utConcat.h"
#include "utUTF8.h"

#include "mrContainers.h"
#include "mrTypes.h"
#include "mrUtils.h"

#include "gsColour.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cctype>
#include <cmath>
#include <optional>

namespace mrtool {

namespace {

constexpr std::string_view signature = "ASEF";

std::uint32_t parse_number(std::string_view bytes)
{
    std::uint32_t value = 0;
    for (char const byte : bytes)
        value = value << 8 | static_cast<unsigned char>(byte);
    return value;
}

bool is_surrogate(std::uint32_t unit)
{
    return unit >= 0xd800 && unit < 0xe000;
}

/// Converts units of UTF-16 to UTF-8, without a NUL at the end.
/// @param faulty  set to true when a surrogate stands alone; it becomes U+FFFD
std::string to_utf8(std::string_view units, bool& faulty)
{
    std::string text;
    if (units.ends_with(std::string_view("\0\0", 2)))
        units.remove_suffix(2);
    while (!units.empty()) {
        std::uint32_t const first = parse_number(units.substr(0, 2));
        units.remove_prefix(2);
        std::uint32_t const second = parse_number(units.substr(0, 2));
        if (!is_surrogate(first)) {
            utUTF8::append(text, first);
        } else if (first < 0xdc00 && second >= 0xdc00 && is_surrogate(second)) {
            utUTF8::append(text, 0x10000 + ((first & 0x3ff) << 10) + (second & 0x3ff));
            units.remove_prefix(2);
        } else {
            utUTF8::append(text, 0xfffd);
            faulty = true;
        }
    }
    return text;
}

// ---- Colours

using Components = std::array<double, 4>;

unsigned char to_byte(double component)
{
    return static_cast<unsigned char>(std::lround(255.0 * std::clamp(component, 0.0, 1.0)));
}

giColour convert_rgb(Components const& values)
{
    return {to_byte(values[0]), to_byte(values[1]), to_byte(values[2]), 0};
}

giColour convert_gray(Components const& values)
{
    return {to_byte(values[0]), to_byte(values[0]), to_byte(values[0]), 0};
}

giColour convert_cmyk(Components const& values)
{
    doublecoDList percentages;
    // The float nearest to 0.2 is a little more, and the library truncates.
    for (double const value : values)
        percentages.append(std::round(value * 100'000.0) / 1000.0);
    giColour colour;
    mrUtils::colour_from_components(mrColourEncodingCmyk, percentages, colour);
    return colour;
}

/// @return red, green and blue of sRGB, which may lie outside of 0 to 1
Components lab_to_srgb(Components const& lab)
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
        // Below 6/29, the tangent replaces the cube.
        xyz[at] = white[at] * (each > 6.0 / 29.0 ? each * each * each : 108.0 / 841.0 * (each - 4.0 / 29.0));
    }
    Components rgb{};
    for (std::size_t at = 0; at < 3; ++at) {
        double const linear = matrix[at][0] * xyz[0] + matrix[at][1] * xyz[1] + matrix[at][2] * xyz[2];
        rgb[at] = gsColour::linear_to_srgb(linear);
    }
    return rgb;
}

giColour convert_lab(Components const& values)
{
    return convert_rgb(lab_to_srgb(values));
}

struct Model
{
    std::string_view name;
    std::size_t count; ///< of components
    giColour (*convert)(Components const& values);
    char const* words; ///< how it was converted; null when that needs no words
};

constexpr Model models[] = {
    {"RGB ", 3, convert_rgb, nullptr},
    {"CMYK", 4, convert_cmyk, "converted from CMYK as the library does it, without a profile: "},
    {"LAB ", 3, convert_lab, "converted from Lab under D50 to sRGB: "},
    {"GRAY", 1, convert_gray, "converted from gray: "},
};

/// @return null for another name; letters count in either case
Model const* find_model(std::string_view name)
{
    auto const found = std::find_if(std::begin(models), std::end(models), [&](Model const& each) {
        return std::equal(each.name.begin(), each.name.end(), name.begin(), name.end(),
                          [](char one, unsigned char other) { return one == std::toupper(other); });
    });
    return found == std::end(models) ? nullptr : found;
}

/// Whether clipping to sRGB changes the colour by half a byte or more.
bool is_beyond_srgb(Components const& lab)
{
    Components const rgb = lab_to_srgb(lab);
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

/// Parses a file. What is not there reads as 0 or empty; the first fault is kept, and parsing ends with its block.
class Parser
{
public:
    explicit Parser(std::string_view bytes) : m_bytes(bytes) {}

    Result<ForeignPalette> parse()
    {
        std::uint32_t const major = read_number(2, "the version");
        std::uint32_t const minor = read_number(2, "the version");
        if (major != 1 || minor != 0)
            record(signature.size(),
                   ut_concat("version ", major, ".", minor, ", and 1.0 is what can be read"));
        std::uint32_t const count = read_number(4, "the number of blocks");
        for (std::uint32_t number = 1; number <= count && !m_fault; ++number) {
            m_block.clear();
            if (m_at == m_end)
                record(m_at, ut_concat("the file ends before block ", number, " of ", count));
            m_block = ut_concat("block ", number, ": ");
            parse_block();
        }
        if (m_fault)
            return tl::unexpected(*m_fault);
        list_changes();
        return std::move(m_palette);
    }

private:
    void record(std::size_t at, std::string_view words)
    {
        if (!m_fault)
            m_fault = Fault{ut_concat("at byte ", at, ": ", m_block, words)};
    }

    /// @param what  the name of these bytes, for the fault
    std::string_view read_bytes(std::size_t count, char const* what)
    {
        std::size_t const left = m_end - m_at;
        if (count > left) {
            record(m_at, ut_concat(what, " takes ", count, " bytes, with ", left, " left"));
            return {};
        }
        m_at += count;
        return m_bytes.substr(m_at - count, count);
    }

    std::uint32_t read_number(std::size_t count, char const* what)
    {
        return parse_number(read_bytes(count, what));
    }

    void parse_block()
    {
        std::size_t const start = m_at;
        std::uint32_t const type = read_number(2, "its type");
        std::uint32_t const length = read_number(4, "its length");
        std::size_t const content = m_at;
        read_bytes(length, "its content");
        m_end = std::exchange(m_at, content);
        if (type == colour_block)
            parse_colour();
        else if (type == group_block)
            m_groups.add(ut_quote_short(parse_name()));
        else if (type != group_end_block)
            m_unknown.add(ut_concat("at byte ", start));
        if ((type == colour_block || type == group_block) && m_at < m_end)
            m_surplus.add(ut_concat("at byte ", m_at));
        m_at = std::exchange(m_end, m_bytes.size());
    }

    std::string parse_name()
    {
        std::size_t const units = read_number(2, "the length of its name");
        bool faulty = false;
        std::string name = to_utf8(read_bytes(2 * units, "its name"), faulty);
        if (faulty)
            m_faulty.add(ut_quote_short(name));
        return name;
    }

    void parse_colour()
    {
        std::string name = parse_name();
        std::string const example = describe_colour(name, m_palette.colours.size());
        std::size_t const start = m_at;
        std::string_view const model_name = read_bytes(4, "its colour model");
        Model const* const model = find_model(model_name);
        if (!model)
            return record(start, ut_concat("its colour model is ", ut_quote_short(model_name),
                                           ", none that can be read"));
        Components const values = parse_components(*model, example);
        std::uint32_t const kind = read_number(2, "its kind");
        if (kind != plain_kind)
            (kind == global_kind ? m_global : kind == spot_kind ? m_spot : m_other_kind).add(example);
        m_converted[model - models].add(example);
        if (model->convert == convert_lab && is_beyond_srgb(values))
            m_beyond.add(example);
        m_palette.colours.push_back({std::move(name), model->convert(values)});
    }

    Components parse_components(Model const& model, std::string const& example)
    {
        Components values{};
        bool clipped = false;
        for (std::size_t at = 0; at < model.count; ++at) {
            std::size_t const start = m_at;
            double const value = std::bit_cast<float>(read_number(4, "a component"));
            if (!std::isfinite(value))
                record(start, ut_concat("component ", at + 1, " of ", example, " is no finite number"));
            bool const chroma = model.convert == convert_lab && at > 0;
            values[at] = chroma ? std::clamp(value, -128.0, 127.0) : std::clamp(value, 0.0, 1.0);
            clipped = clipped || values[at] != value;
        }
        if (clipped)
            m_clipped.add(example);
        return values;
    }

    void list_changes()
    {
        std::vector<std::string>& left_out = m_palette.left_out;
        m_groups.append_to(left_out, "", "group");
        m_global.append_to(left_out, "the kind \"global\" of ", "colour");
        m_spot.append_to(left_out, "the kind \"spot\" of ", "colour");
        m_other_kind.append_to(left_out, "an unknown kind of ", "colour");
        m_surplus.append_to(left_out, "further data in ", "block");
        m_unknown.append_to(left_out, "", "unknown block");
        if (m_at < m_end)
            left_out.push_back(ut_concat(format_count(m_end - m_at, "byte"), " behind the last block"));
        std::vector<std::string>& notes = m_palette.notes;
        for (Model const& model : models)
            if (model.words)
                m_converted[&model - models].append_to(notes, model.words, "colour");
        m_beyond.append_to(notes, "outside of sRGB and clipped to it: ", "colour");
        m_clipped.append_to(notes, "with components out of their range and brought into it: ", "colour");
        m_faulty.append_to(notes, "with faulty UTF-16, now U+FFFD: ", "name");
    }

    std::string_view m_bytes;
    std::size_t m_at = signature.size();
    std::size_t m_end = m_bytes.size(); ///< of the file, or of the block that is being parsed
    std::string m_block;                ///< "block 7: " while one is parsed
    std::optional<Fault> m_fault;
    ForeignPalette m_palette;
    Tally m_converted[std::size(models)];
    Tally m_groups, m_global, m_spot, m_other_kind, m_surplus, m_unknown, m_beyond, m_clipped, m_faulty;
};

} // namespace

bool is_swatch_exchange(std::string_view bytes)
{
    return bytes.starts_with(signature);
}

Result<ForeignPalette> parse_swatch_exchange(std::string_view bytes)
{
    return Parser(bytes).parse();
}

} // namespace mrtool
