#include "mrPaletteLine.h"

#include "mrColourPalette.h"
#include "mrUtils.h"

#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <cctype>
#include <sstream>

namespace {

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
