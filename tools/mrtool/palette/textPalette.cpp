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
constexpr std::string_view gpl_title = "GIMP Palette";

std::string_view without_leading_blanks(std::string_view line)
{
    return line.substr(std::min(line.find_first_not_of(blanks), line.size()));
}

/// The lines of a text, one after the other.
class Lines
{
public:
    explicit Lines(std::string_view text) : m_left(utUTF8::without_byte_order_mark(text)) {}

    /// @return false when there is none any more
    bool next()
    {
        if (m_left.empty())
            return false;
        m_line = m_left.substr(0, m_left.find_first_of("\r\n"));
        m_left.remove_prefix(m_line.size());
        m_left.remove_prefix(m_left.starts_with("\r\n") ? 2 : std::min<std::size_t>(m_left.size(), 1));
        ++m_number;
        return true;
    }

    std::string_view line() const { return m_line; }
    long number() const { return m_number; }

private:
    std::string_view m_left;
    std::string_view m_line;
    long m_number = 0;
};

/// A line with a colour, taken apart.
struct ColourLine
{
    std::array<unsigned char, 4> numbers{};
    std::string_view name;

    giColour colour() const { return {numbers[0], numbers[1], numbers[2], 0}; }
};

/// @param count  of numbers, 3 or 4
/// @return in words what is wrong; null when nothing is
char const* take_apart(std::string_view line, std::size_t count, ColourLine& made)
{
    for (std::size_t at = 0; at < count; ++at) {
        line = without_leading_blanks(line);
        unsigned value = 0;
        auto const [end, error] = std::from_chars(line.data(), line.data() + line.size(), value);
        line.remove_prefix(static_cast<std::size_t>(end - line.data()));
        if (error == std::errc::invalid_argument ||
            (!line.empty() && blanks.find(line.front()) == blanks.npos))
            return count == 3 ? "it does not begin with three whole numbers"
                              : "it does not begin with four whole numbers";
        if (error != std::errc() || value > 255)
            return "a number is out of its range, 0 to 255";
        made.numbers[at] = static_cast<unsigned char>(value);
    }
    made.name = without_leading_blanks(line);
    return nullptr;
}

bool fail(ForeignFault& fault, Lines const& lines, char const* words)
{
    fault.line = lines.number();
    fault.words = words;
    return false;
}

/// Reads the lines of a GPL palette behind the first.
class GplReader
{
public:
    explicit GplReader(ForeignPalette& palette) : m_palette(palette) {}

    /// @return in words what is wrong with the line; null when nothing is
    char const* take(std::string_view line)
    {
        std::string_view const rest = without_leading_blanks(line);
        if (rest.empty())
            return nullptr;
        if (rest.front() == '#') {
            m_comments += rest.find_first_not_of("# \t") != rest.npos;
            return nullptr;
        }
        if (m_palette.colours.empty() && is_header(line)) {
            take_header(line);
            return nullptr;
        }
        return take_colour(line);
    }

    void tell()
    {
        std::vector<std::string>& left_out = m_palette.left_out;
        if (!m_headers.empty())
            left_out.push_back(m_headers.of("header line"));
        if (m_comments > 0)
            left_out.push_back(number_of(m_comments, "comment"));
        if (!m_transparent.empty())
            left_out.push_back("the transparency of " + m_transparent.of("colour"));
        if (m_untitled > 0)
            m_palette.notes.push_back(
                ut_concat("\"", untitled, "\" stands for no name: ", number_of(m_untitled, "colour")));
    }

private:
    static constexpr std::string_view untitled = "Untitled";

    /// Whether it begins with a word and a colon.
    static bool is_header(std::string_view line)
    {
        std::string_view const word = line.substr(0, line.find(':'));
        return !word.empty() && word.size() < line.size() &&
               std::all_of(word.begin(), word.end(),
                           [](unsigned char letter) { return std::isalpha(letter); });
    }

    void take_header(std::string_view line)
    {
        constexpr std::string_view channels = "Channels:";
        if (line.starts_with(channels) && without_leading_blanks(line.substr(channels.size())) == "RGBA")
            m_numbers = 4;
        else
            m_headers.add(shown(line));
    }

    char const* take_colour(std::string_view line)
    {
        ColourLine made;
        made.numbers[3] = 255;
        if (char const* const wrong = take_apart(line, m_numbers, made))
            return wrong;
        if (made.name == untitled) {
            ++m_untitled;
            made.name = {};
        }
        m_palette.colours.push_back({std::string(made.name), made.colour()});
        if (made.numbers[3] != 255)
            m_transparent.add(shown_colour(m_palette.colours.back().name, m_palette.colours.size() - 1));
        return nullptr;
    }

    ForeignPalette& m_palette;
    std::size_t m_numbers = 3;
    std::size_t m_comments = 0;
    std::size_t m_untitled = 0;
    Tally m_headers;
    Tally m_transparent;
};

bool is_passed_over(std::string_view line)
{
    return line.empty() || line.front() == '!' || line.front() == '#';
}

} // namespace

bool is_gpl(std::string_view text)
{
    Lines lines(text);
    if (!lines.next() || !lines.line().starts_with(gpl_title))
        return false;
    return without_leading_blanks(lines.line().substr(gpl_title.size())).empty();
}

bool read_gpl(std::string_view text, ForeignPalette& palette, ForeignFault& fault)
{
    Lines lines(text);
    lines.next();
    GplReader reader(palette);
    while (lines.next())
        if (char const* const wrong = reader.take(lines.line()))
            return fail(fault, lines, wrong);
    reader.tell();
    return true;
}

bool is_rgb_txt(std::string_view text)
{
    Lines lines(text);
    while (lines.next()) {
        std::string_view const line = without_leading_blanks(lines.line());
        ColourLine made;
        if (!is_passed_over(line))
            return !take_apart(line, 3, made) && !made.name.empty();
    }
    return false;
}

bool read_rgb_txt(std::string_view text, ForeignPalette& palette, ForeignFault& fault)
{
    Lines lines(text);
    std::size_t comments = 0;
    while (lines.next()) {
        std::string_view const line = without_leading_blanks(lines.line());
        if (is_passed_over(line)) {
            comments += line.find_first_not_of("!# \t") != line.npos;
            continue;
        }
        ColourLine made;
        if (char const* const wrong = take_apart(line, 3, made))
            return fail(fault, lines, wrong);
        if (made.name.empty())
            return fail(fault, lines, "it has no name");
        palette.colours.push_back({std::string(made.name), made.colour()});
    }
    if (comments > 0)
        palette.left_out.push_back(number_of(comments, "comment"));
    return true;
}

} // namespace mrtool
