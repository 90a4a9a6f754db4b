#include "program.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include "gxImageFileUtils.h"
#include "gxPNG.h"

#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <sys/wait.h>

Outcome run_mrtool(std::string const& arguments, std::string const& before, std::string const& output)
{
    TestFolder const folder;
    std::string const caught = folder.path("output"), errors = folder.path("errors");
    write_bytes(caught, {});
    std::string const command = before + " " MRTOOL " </dev/null " + arguments + " >" +
                                (output.empty() ? caught : output) + " 2>" + errors;
    int const status = std::system(command.c_str());
    return {WIFEXITED(status) ? WEXITSTATUS(status) : -1, read_bytes(caught), read_bytes(errors)};
}

dgCounted<dgDuctImage> four_colours(int side)
{
    auto image = dg_hold(new dgDuctImage("four colours", side, side));
    short const colours[2][2][4] = {{{255, 0, 0, 255}, {0, 255, 0, 255}},
                                    {{0, 0, 255, 255}, {255, 255, 255, 255}}};
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            image->set_pixel(x, y, colours[2 * y / side][2 * x / side]);
    return image;
}

std::string png_bytes(dgDuctImage const& image, std::string const& title)
{
    TestFolder const folder;
    utStringutStringcoTable texts(1, 50);
    if (!title.empty()) {
        texts["Title"] = utString(title);
        texts["DuctImageName"] = image.name();
    }
    std::FILE* const file = std::fopen(folder.path("image").c_str(), "wb");
    EXPECT_TRUE(gxPNGWriterDuctImage::write_file(image, file, texts));
    std::fclose(file);
    return read_bytes(folder.path("image"));
}

void write_material(std::string const& path, std::vector<giColour> const& colours,
                    std::vector<std::string> const& layers, std::vector<std::string> const& images)
{
    mrMatPropcoSet properties(mrInitialSize, mrFillLimit);
    mrFMFacetcoDListPtrcoPtrcoDList facets;
    for (giColour const& colour : colours) {
        mrFMTexturecoDList textures;
        if (facets.empty())
            for (std::string const& layer : layers)
                textures.append(mrFMTexture(utString(layer), mrTexLayerColour, 1, giColour(255, 128, 0, 0)));
        facets.append(new mrFMFacet(
            new mrFMPlainMat("paint", properties, 3, colour, 0.5, 0.25, 0.125, 0.0, 1.5, utString()),
            textures));
    }
    properties.add(mrMatProp(mrMatPropTypeStringTag, "supplier", "M\xfcller", 0));
    properties.add(mrMatProp(mrMatPropTypeDoubleTag, "price", 0.1, 0));
    auto const picture = four_colours();
    utStringdgDuctImagecoTablePtrcoPtrcoTable table(mrInitialSize, mrFillLimit);
    for (std::string const& image : images)
        table[utString(image)] = picture.get();
    EXPECT_TRUE(mrFileMat(properties, facets, table).write(utString(path)));
}

dgCounted<dgDuctImage> read_png(std::string const& path)
{
    utString reason;
    auto image = dg_hold(gxImageFileUtils::read_image_file(utString(path), gxImageFilePNG, &reason));
    EXPECT_TRUE(image) << path << ": " << reason.c_str();
    return image ? std::move(image) : dg_hold(new dgDuctImage("", 1, 1));
}

std::ptrdiff_t files_in(std::string const& folder)
{
    return std::distance(std::filesystem::directory_iterator(folder), std::filesystem::directory_iterator());
}

std::string pixel(dgDuctImage const& image, int x, int y)
{
    short components[4];
    image.get_pixel(x, y, components);
    return std::to_string(components[0]) + " " + std::to_string(components[1]) + " " +
           std::to_string(components[2]);
}
