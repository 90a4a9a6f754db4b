#include "paletteFile.h"

#include "inputFile.h"
#include "messages.h"
#include "tally.h"
#include "utConcat.h"
#include "utUTF8.h"

#include "mrUtils.h"

#include <algorithm>
#include <cctype>
#include <iterator>
#include <sstream>
#include <string_view>

namespace mrtool {

namespace {

constexpr char const* keywords[] = {"rgb8", "cmy8", "cmyk"};

struct Line
{
    long number = 1;
    std::string bytes; ///< without its line feed
};

/// The line that the library read last, found by how far it came.
Line last_line_read(std::ifstream& in)
{
    in.clear(); // a stream at its end has no position
    std::streamoff left = in.tellg();
    in.seekg(0);
    Line line;
    std::istreambuf_iterator<char> at(in);
    for (; left > 0 && at != std::istreambuf_iterator<char>(); ++at, --left) {
        if (*at != '\n') {
            line.bytes += *at;
        } else if (left > 1) {
            ++line.number;
            line.bytes.clear();
        }
    }
    return line;
}

/// What the library makes of a line on its own.
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

std::string without_mark(std::string line)
{
    return std::string(utUTF8::without_byte_order_mark(line));
}

std::string with_spaces_for_tabs(std::string line)
{
    std::replace(line.begin(), line.end(), '\t', ' ');
    return line;
}

std::string in_small_letters(std::string line)
{
    std::transform(line.begin(), line.end(), line.begin(),
                   [](unsigned char letter) { return static_cast<char>(std::tolower(letter)); });
    return line;
}

std::string without_carriage_returns(std::string line)
{
    std::erase(line, '\r');
    return line;
}

/// What keeps a line from being well formed, when it would be without that.
struct Flaw
{
    std::string (*mended)(std::string line);
    char const* words;
};

constexpr Flaw flaws[] = {
    {without_mark, "it begins with a byte order mark (EF BB BF), which must go"},
    {with_spaces_for_tabs, "it has a tab where only spaces may be"},
    {in_small_letters, "its keyword is not in small letters"},
    {without_carriage_returns, "it has a carriage return inside; lines end with a line feed, or both"},
};

std::string bad_format(std::string const& line)
{
    if (line.find_first_not_of(" \r") == line.npos)
        return "nothing but a carriage return, which makes no empty line: write # before it, or end the "
               "lines of the file with line feeds alone";
    // The library's reader has but one word for a bad line and for too little memory.
    if (is_well_formed(line) || !is_well_formed("rgb8 0 0 0"))
        return "not enough memory";
    auto const flaw = std::find_if(std::begin(flaws), std::end(flaws),
                                   [&](Flaw const& each) { return is_well_formed(each.mended(line)); });
    if (flaw != std::end(flaws))
        return flaw->words;
    return "not rgb8 or cmy8 and three whole numbers, nor cmyk and four, or a number is far too large";
}

std::string duplicate_name(std::string const& line)
{
    mrColourPalette palette;
    read_line(line, palette);
    utString name;
    if (!palette.empty())
        palette.colour(0, name);
    return ut_concat("an earlier line has the name ", shown(name.view()), " already");
}

std::string fault_in(std::string const& line, mrPaletteFileError status)
{
    switch (status) {
    case mrPaletteFileDuplicateName:
        return duplicate_name(line);
    case mrPaletteFileOutOfRange:
        return "a number is out of its range, 0 to 255 in rgb8 and cmy8, 0 to 100 in cmyk";
    default:
        return bad_format(line);
    }
}

/// Looks at what the library's reader left of the stream, and at what it says.
void find_remark(std::ifstream& in, PaletteFile& file)
{
    bool const stopped = file.status != mrPaletteFileOK;
    // The library ends at a line that is too long as at the end of the file.
    bool const too_long = !stopped && !in.bad() && !in.eof();
    if (stopped || too_long) {
        Line const line = last_line_read(in);
        file.line = line.number;
        file.remark = stopped ? fault_in(line.bytes, file.status)
                              : "longer than 1,023 characters; it and the lines after it are not read";
    } else if (in.bad()) {
        file.status = mrPaletteFileBadFormat;
        file.remark = "reading it failed before its end";
    } else if (file.palette.empty()) {
        file.remark = "it holds no colour";
    }
    if (file.palette.empty() && !stopped)
        file.status = mrPaletteFileBadFormat;
}

} // namespace

char const* keyword(mrColourEncoding encoding)
{
    return keywords[encoding - mrColourEncodingRgb8];
}

bool is_palette(std::string_view beginning)
{
    constexpr std::string_view blank = " \r\n";
    std::size_t at = beginning.find_first_not_of(blank);
    while (at < beginning.size() && beginning[at] == '#')
        at = beginning.find_first_not_of(blank, beginning.find('\n', at));
    std::string_view const line = beginning.substr(std::min(at, beginning.size()));
    return std::any_of(std::begin(keywords), std::end(keywords),
                       [line](char const* each) { return line.starts_with(each); });
}

void read_palette_file(std::string const& path, PaletteFile& file)
{
    std::ifstream in = open_input(path, file.remark);
    if (!in)
        return;
    file.status = mrUtils::read_pcp(in, file.palette);
    find_remark(in, file);
}

void say_remark(std::string const& path, PaletteFile const& file)
{
    if (file.remark.empty())
        return;
    std::string const place = file.line > 0 ? ut_concat(path, ":", file.line) : path;
    say(place, file.status == mrPaletteFileOpenFailed ? cannot_be_opened(file.remark) : file.remark);
}

} // namespace mrtool
