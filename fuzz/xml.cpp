// XML: a document that parses can be written, and what is written parses to the same.
#include "fuzz.h"

#include "xmlParser.h"
#include "xmlWriter.h"

#include <sstream>

namespace {

/// @return whether the text is a document
bool rewrite(std::string const& text, std::string& written)
{
    xmlDocument document;
    if (!xmlParser().parse(utString(text), document))
        return false;
    std::ostringstream out;
    xmlWriter(&document).write(out);
    written = out.str();
    return true;
}

} // namespace

void try_input(std::string const& bytes)
{
    std::string first;
    std::string second;
    if (!rewrite(bytes, first))
        return;
    require(rewrite(first, second), "a document that was written parses");
    require(first == second, "a document is the same when it is read and written once more");
}
