#include "mrPaletteLine.h"

#include "mrColourPalette.h"
#include "mrUtils.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>

namespace {

/// Reads a line on its own.
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

std::string drop_mark(std::string line)
{
    return std::string(utUTF8::without_byte_order_mark(line));
}

std::string replace_tabs(std::string line)
{
    std::replace(line.begin(), line.end(), '\t', ' ');
    return line;
}

std::string lower_letters(std::string line)
{
    std::transform(line.begin(), line.end(), line.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return line;
}

std::string drop_carriage_returns(std::string line)
{
    std::erase(line, '\r');
    return line;
}

/// A mistake that people make, and the line without it.
struct Flaw
{
    std::string (*mend)(std::string line);
    char const* words;
};

constexpr Flaw flaws[] = {
    {drop_mark, "it begins with a byte order mark (EF BB BF), which must go"},
    {replace_tabs, "it has a tab where only spaces may be"},
    {lower_letters, "its keyword is not in small letters"},
    {drop_carriage_returns, "it has a carriage return inside; lines end with a line feed, or both"},
};

utString explain_format(std::string const& line)
{
    if (line.find_first_not_of(" \r") == line.npos)
        return "nothing but a carriage return, which makes no empty line: write # before it, or end the "
               "lines of the file with line feeds alone";
    // Too little memory has the same status as a bad line.
    if (is_well_formed(line) || !is_well_formed("rgb8 0 0 0"))
        return "not enough memory";
    auto const flaw = std::find_if(std::begin(flaws), std::end(flaws),
                                   [&](Flaw const& each) { return is_well_formed(each.mend(line)); });
    if (flaw != std::end(flaws))
        return flaw->words;
    return "not rgb8 or cmy8 and three whole numbers, nor cmyk and four, or a number is far too large";
}

utString explain_duplicate(std::string const& line)
{
    mrColourPalette palette;
    read_line(line, palette);
    utString name;
    if (!palette.empty())
        palette.colour(0, name);
    return utString(ut_concat("an earlier line has the name ", ut_quote_short(name.view()), " already"));
}

} // namespace

utString mr_explain_palette_line(std::string const& line, mrPaletteFileError error)
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
