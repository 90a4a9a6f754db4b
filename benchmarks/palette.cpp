// Palettes: their files, and finding a colour by its name.
#include "mrColourPalette.h"
#include "mrUtils.h"

#include "support/material.h"
#include "support/table.h"

#include "utString.h"

#include <benchmark/benchmark.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

constexpr int colours = 100'000;

/// Named colours, one in three of each encoding.
std::string palette_text(int count)
{
    std::string text;
    for (int i = 0; i < count; ++i) {
        char line[80];
        int const one = i % 256;
        int const other = i / 256 % 256;
        if (i % 3 == 2)
            std::snprintf(line, sizeof line, "cmyk %d %d 7 %d Colour number %d\n", i % 101, i / 101 % 101,
                          i % 7, i);
        else
            std::snprintf(line, sizeof line, "%s %d %d 7 Colour number %d\n", i % 3 ? "cmy8" : "rgb8", one,
                          other, i);
        text += line;
    }
    return text;
}

void read(std::string const& text, int count)
{
    std::istringstream in(text);
    mrColourPalette palette;
    require(mrUtils::read_pcp(in, palette) == mrPaletteFileOK && palette.size() == count,
            "the palette cannot be read");
}

struct ScannedLine
{
    char keyword[5];
    int components[4];
};

void scan(std::string const& text, int count)
{
    std::istringstream in(text);
    std::vector<ScannedLine> lines;
    std::unordered_map<std::string, int> names;
    for (std::string line; std::getline(in, line);) {
        ScannedLine one{};
        int* const at = one.components;
        char name[1024] = "";
        if (line.starts_with("cmyk"))
            std::sscanf(line.c_str(), "%4s %d %d %d %d %1023[^\n]", one.keyword, at, at + 1, at + 2, at + 3,
                        name);
        else
            std::sscanf(line.c_str(), "%4s %d %d %d %1023[^\n]", one.keyword, at, at + 1, at + 2, name);
        lines.push_back(one);
        names.emplace(name, static_cast<int>(lines.size()) - 1);
    }
    require(static_cast<int>(names.size()) == count, "names are missing");
}

void compare_find(Table& table, mrColourPalette const& palette)
{
    std::vector<utString> names(colours);
    std::vector<std::string> same_names;
    std::unordered_map<std::string, int> map;
    for (int i = 0; i < colours; ++i) {
        utString name;
        palette.colour(static_cast<int>(i * 7919LL % colours), name);
        names[static_cast<std::size_t>(i)] = name;
        same_names.emplace_back(name.view());
    }
    for (int i = 0; i < colours; ++i) {
        utString name;
        palette.colour(i, name);
        map.emplace(name.view(), i);
    }
    table.compare(
        "find each of 100,000 colours by its name, out of order",
        [&] {
            for (utString const& name : names) {
                int index = -1;
                require(palette.find_colour(name, index), "a name is not found");
                benchmark::DoNotOptimize(index);
            }
        },
        {"std::unordered_map",
         [&] {
             for (std::string const& name : same_names)
                 benchmark::DoNotOptimize(map.find(name)->second);
         }},
        1.5);
}

void compare_write(Table& table, mrColourPalette const& palette)
{
    WorkFolder const folder;
    std::string const path = folder.file("palette.pcp");
    table.note("write a palette of 100,000 colours",
               [&] {
                   std::ofstream out(path);
                   require(mrUtils::write_pcp(palette, out).good(), "the palette cannot be written");
               },
               {"without the flush of each line", [&] {
                    std::ostringstream text;
                    mrUtils::write_pcp(palette, text);
                    std::ofstream(path) << text.view();
                }});
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    std::string const text = palette_text(colours);
    std::string const twice = palette_text(2 * colours);
    table.compare(
        "read a palette of 100,000 colours", [&] { read(text, colours); },
        {"getline and sscanf", [&] { scan(text, colours); }}, 4.0);
    table.compare(
        "read a palette of 200,000 colours", [&] { read(twice, 2 * colours); },
        {"100,000 colours", [&] { read(text, colours); }}, 2.2);

    std::istringstream in(text);
    mrColourPalette palette;
    mrUtils::read_pcp(in, palette);
    compare_find(table, palette);
    compare_write(table, palette);
}
