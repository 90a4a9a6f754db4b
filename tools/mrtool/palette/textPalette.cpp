#include "textPalette.h"

#include "tally.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <charconv>

namespace mrtool {

namespace {

constexpr std::string_view blanks = " \t";

std::string_view remove_leading_blanks(std::string_view line)
{
    return line.substr(std::min(line.find_first_not_of(blanks), line.size()));
}

/// Removes the first line from the text, with its end.
std::string_view pop_line(std::string_view& text)
{
    std::string_view const line = text.substr(0, text.find_first_of("\r\n"));
    text.remove_prefix(line.size());
    text.remove_prefix(text.starts_with("\r\n") ? 2 : std::min<std::size_t>(text.size(), 1));
    return line;
}

struct ColourLine
{
    std::array<unsigned char, 4> numbers{0, 0, 0, 255};
    std::string_view name;
};

/// @param count  of numbers, 3 or 4
Result<ColourLine> parse_colour(std::string_view line, std::size_t count)
{
    ColourLine colour;
    for (std::size_t at = 0; at < count; ++at) {
        line = remove_leading_blanks(line);
        unsigned value = 0;
        auto const [end, error] = std::from_chars(line.data(), line.data() + line.size(), value);
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
        if (error == std::errc::invalid_argument ||
            (!line.empty() && blanks.find(line.front()) == blanks.npos))
            return fail(
                ut_concat("it does not begin with ", count == 3 ? "three" : "four", " whole numbers"));
        if (error != std::errc() || value > 255)
            return fail("a number is out of its range, 0 to 255");
        colour.numbers[at] = static_cast<unsigned char>(value);
    }
    colour.name = remove_leading_blanks(line);
    return colour;
}

struct Format
{
    std::string_view title; ///< the first line, which headers may follow
    std::string_view comment_signs;
    std::string_view no_name; ///< the name of colours without one; they are refused when this is empty
};

constexpr Format gpl{"GIMP Palette", "#", "Untitled"};
constexpr Format rgb_txt{"", "!#", ""};

/// Whether the line is empty or a comment.
bool is_passed_over(std::string_view line, Format const& format)
{
    std::string_view const text = remove_leading_blanks(line);
    return text.empty() || format.comment_signs.find(text.front()) != text.npos;
}

/// Whether the line begins with a word and a colon.
bool is_header(std::string_view line)
{
    std::string_view const word = line.substr(0, line.find(':'));
    return !word.empty() && word.size() < line.size() &&
           std::all_of(word.begin(), word.end(), [](unsigned char letter) { return std::isalpha(letter); });
}

class Parser
{
public:
    explicit Parser(Format const& format) : m_format(format) {}

    Result<ForeignPalette> parse(std::string_view text)
    {
        text = utUTF8::without_byte_order_mark(text);
        for (long number = 1; !text.empty(); ++number) {
            std::string_view const line = pop_line(text);
            if (number == 1 && !m_format.title.empty())
                continue;
            if (Result<> const parsed = parse_line(line); !parsed)
                return fail(parsed.error().words, number);
        }
        list_left_out();
        return std::move(m_palette);
    }

private:
    Result<> parse_line(std::string_view line)
    {
        if (is_passed_over(line, m_format))
            m_comments += line.find_first_not_of(ut_concat(m_format.comment_signs, blanks)) != line.npos;
        else if (!m_format.title.empty() && m_palette.colours.empty() && is_header(line))
            parse_header(line);
        else
            return parse_colour(line, m_numbers).and_then([&](ColourLine const& colour) {
                return add(colour);
            });
        return {};
    }

    void parse_header(std::string_view line)
    {
        constexpr std::string_view channels = "Channels:";
        if (line.starts_with(channels) && remove_leading_blanks(line.substr(channels.size())) == "RGBA")
            m_numbers = 4;
        else
            m_headers.add(ut_quote_short(line));
    }

    Result<> add(ColourLine const& line)
    {
        if (line.name.empty() && m_format.no_name.empty())
            return fail("it has no name");
        bool const untitled = !line.name.empty() && line.name == m_format.no_name;
        m_untitled += untitled;
        auto const [red, green, blue, opacity] = line.numbers;
        std::string name(untitled ? "" : line.name);
        if (opacity != 255)
            m_transparent.add(describe_colour(name, m_palette.colours.size()));
        m_palette.colours.push_back({std::move(name), giColour(red, green, blue, 0)});
        return {};
    }

    void list_left_out()
    {
        m_headers.append_to(m_palette.left_out, "", "header line");
        if (m_comments > 0)
            m_palette.left_out.push_back(format_count(m_comments, "comment"));
        m_transparent.append_to(m_palette.left_out, "the transparency of ", "colour");
        if (m_untitled > 0)
            m_palette.notes.push_back(ut_concat(
                "\"", m_format.no_name, "\" stands for no name: ", format_count(m_untitled, "colour")));
    }

    Format const& m_format;
    ForeignPalette m_palette;
    std::size_t m_numbers = 3; ///< of a line
    std::size_t m_comments = 0;
    std::size_t m_untitled = 0;
    Tally m_headers;
    Tally m_transparent;
};

} // namespace

bool is_gpl(std::string_view text)
{
    text = utUTF8::without_byte_order_mark(text);
    std::string_view const line = pop_line(text);
    return line.starts_with(gpl.title) && remove_leading_blanks(line.substr(gpl.title.size())).empty();
}

Result<ForeignPalette> parse_gpl(std::string_view text)
{
    return Parser(gpl).parse(text);
}

bool is_rgb_txt(std::string_view text)
{
    text = utUTF8::without_byte_order_mark(text);
    std::string_view line;
    while (!text.empty() && is_passed_over(line, rgb_txt))
        line = pop_line(text);
    Result<ColourLine> const colour = parse_colour(line, 3);
    return colour && !colour->name.empty();
}

Result<ForeignPalette> parse_rgb_txt(std::string_view text)
{
    return Parser(rgb_txt).parse(text);
}

} // namespace mrtool
