#include "materialDocument.h"

#include "utConcat.h"

#include "mrXMLUtils.h"

#include "xmlParser.h"

#include <algorithm>
#include <charconv>
#include <fstream>
#include <iterator>
#include <string_view>

namespace mrtool {

namespace {

/// Why mrXMLUtils::read_doc found no document.
std::string no_document_fault(std::ifstream& in)
{
    in.clear();
    in.seekg(0);
    char line[mrXMLUtils::max_line + 1];
    int opened_at = 0;
    int number = 0;
    while (in.getline(line, sizeof line)) {
        ++number;
        if (opened_at == 0 && std::string_view(line).find("<multimat>") != std::string_view::npos)
            opened_at = number;
    }
    // A line that is too long ends the loop as a failure, the end of the file does too.
    if (!in.eof())
        return ut_concat("line ", number + 1, " is longer than ", mrXMLUtils::max_line, " characters");
    if (opened_at == 0)
        return "no line holds \"<multimat>\"";
    return ut_concat("\"<multimat>\" in line ", opened_at, " is never closed");
}

/// The parser's message with its line counted from the beginning of the file.
std::string in_file(utString const& error, long lines_before)
{
    constexpr std::string_view line = "line ";
    std::string_view const message = error.view();
    long number = 0;
    if (!message.starts_with(line))
        return std::string(message);
    char const* const end = message.data() + message.size();
    char const* const rest = std::from_chars(message.data() + line.size(), end, number).ptr;
    return ut_concat(line, number + lines_before, std::string_view(rest, end));
}

long lines_before(std::ifstream& in, std::streamoff start)
{
    in.clear();
    in.seekg(0);
    long lines = 0;
    std::istreambuf_iterator<char> at(in);
    for (; start > 0 && at != std::istreambuf_iterator<char>(); --start, ++at)
        lines += *at == '\n';
    return lines;
}

} // namespace

void read_material_document(std::string const& path, MaterialDocument& document)
{
    std::ifstream in(path, std::ios::binary);
    utString text;
    if (!mrXMLUtils::read_doc(in, "multimat", text)) {
        document.fault = no_document_fault(in);
        return;
    }
    bool const at_end = in.eof(); // the last line has no line break; the text got one
    in.clear();
    std::streamoff const end = in.tellg();
    document.images_start = static_cast<long>(end) + 1;
    xmlParser parser;
    if (parser.parse(text, document.document))
        return;
    std::streamoff const start = end + at_end - static_cast<std::streamoff>(text.length());
    document.fault = in_file(parser.error(), lines_before(in, start));
}

} // namespace mrtool
