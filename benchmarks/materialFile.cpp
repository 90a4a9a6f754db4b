// Reading and writing a material file with four textures, beside libpng alone.
#include "support/barePng.h"
#include "support/material.h"
#include "support/peak.h"
#include "support/table.h"

#include <vector>

namespace {

constexpr int textures = 4;
constexpr int side = 1024;

std::vector<dgDuctImage const*> images_of(mrFileMat const& material)
{
    std::vector<dgDuctImage const*> images;
    for (auto const& [name, image] : material.images())
        images.push_back(image);
    return images;
}

} // namespace

int main(int argc, char** argv)
{
    Table table(argc, argv);
    WorkFolder const folder;
    std::string const ours = folder.file("four.multimat");
    std::string const theirs = folder.file("four.png");
    std::unique_ptr<mrFileMat> const written = material(textures, side);
    auto const write = [&] { require(written->write(utString(ours)), "the material cannot be written"); };
    auto const read = [&] {
        mrFileMat material;
        require(material.read(utString(ours)) == mrFileMatReadOK, "the material cannot be read");
    };
    write();
    std::vector<dgDuctImage const*> const images = images_of(*written);
    encode(images, theirs);

    double const pixels = 4.0 * side * side * textures;
    table.size("peak memory of a process that reads a material file with four 1024² textures",
               peak_of_reading(ours), 1.3 * pixels + (16 << 20));
    table.compare("read a material file with four 1024² textures", read,
                  {"libpng's rows", [&] { decode(theirs, textures); }}, 1.10);
    table.compare("write it", write, {"libpng", [&] { encode(images, theirs); }}, 1.10);
}
