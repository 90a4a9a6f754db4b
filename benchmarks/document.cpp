// Reading a document of many facets, beside an XML parser that does nothing with it.
#include "support/material.h"
#include "support/peak.h"
#include "support/table.h"

#include <expat.h>

#include <filesystem>
#include <fstream>
#include <iterator>

namespace {

void start_element(void*, XML_Char const*, XML_Char const**) {}
void end_element(void*, XML_Char const*) {}
void character_data(void*, XML_Char const*, int) {}

void parse(std::string const& text)
{
    XML_Parser const parser = XML_ParserCreate("UTF-8");
    XML_SetElementHandler(parser, start_element, end_element);
    XML_SetCharacterDataHandler(parser, character_data);
    require(XML_Parse(parser, text.data(), static_cast<int>(text.size()), XML_TRUE) == XML_STATUS_OK,
            "the document does not parse");
    XML_ParserFree(parser);
}

void read(std::string const& path)
{
    mrFileMat material;
    require(material.read(utString(path)) == mrFileMatReadOK, "the material cannot be read");
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    WorkFolder const folder;
    std::string const smaller = folder.file("10000.multimat");
    std::string const larger = folder.file("20000.multimat");
    require(material(10000, 0)->write(utString(smaller)) && material(20000, 0)->write(utString(larger)),
            "the materials cannot be written");
    std::ifstream in(smaller, std::ios::binary);
    std::string const text{std::istreambuf_iterator<char>(in), {}};

    table.size("peak memory of a process that reads a document of 10,000 facets", peak_of_reading(smaller),
               20.0 * static_cast<double>(text.size()));
    table.compare(
        "read a document of 10,000 facets", [&] { read(smaller); },
        {"expat, empty handlers", [&] { parse(text); }}, 5.0);
    table.compare(
        "read a document of 20,000 facets", [&] { read(larger); }, {"10,000 facets", [&] { read(smaller); }},
        2.2);
}
