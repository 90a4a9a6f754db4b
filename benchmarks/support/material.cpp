#include "material.h"

#include "table.h"

#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include <cmath>
#include <cstdlib>
#include <filesystem>

Picture material_picture(char const* name, int side, unsigned seed)
{
    Picture picture = dg_hold(new dgDuctImage(name, side, side));
    unsigned char* pixel = picture->pixels();
    unsigned grain = seed;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x, pixel += 4) {
            grain = grain * 1664525U + 1013904223U;
            double const shape = std::sin(x * 0.02) * std::cos(y * 0.03) * 60.0 + 128.0;
            auto const tone = static_cast<int>(shape) + static_cast<int>(grain >> 29);
            pixel[0] = static_cast<unsigned char>(tone + 40);
            pixel[1] = static_cast<unsigned char>(tone);
            pixel[2] = static_cast<unsigned char>(tone / 2);
            pixel[3] = 255;
        }
    return picture;
}

std::unique_ptr<mrFileMat> material(int facets, int texture_side)
{
    mrFMFacetcoDListPtrcoPtrcoDList list;
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    std::vector<Picture> pictures;
    for (int i = 0; i < facets; ++i) {
        std::string const number = std::to_string(i);
        mrMatPropcoSet properties(mrInitialSize, mrFillLimit);
        properties.add(mrMatProp(mrMatPropTypeStringTag, "article", utString("A-" + number), 0));
        mrFMTexturecoDList layers;
        if (texture_side > 0) {
            utString const name("texture " + number);
            pictures.push_back(material_picture(name.c_str(), texture_side, static_cast<unsigned>(i)));
            images[name] = pictures.back().get();
            layers.append(mrFMTexture(name, mrTexLayerColour, 0, giColour()));
        }
        giColour const colour(200, static_cast<unsigned char>(i), 90, 0);
        list.append(new mrFMFacet(new mrFMPlainMat(utString("plain " + number), properties, 1, colour, 0.5,
                                                   0.25, 0.0, 0.0, 1.5, utString()),
                                  layers));
    }
    return std::make_unique<mrFileMat>(mrMatPropcoSet(mrInitialSize, mrFillLimit), list, images);
}

WorkFolder::WorkFolder()
{
    std::string name = (std::filesystem::temp_directory_path() / "mr-benchmark-XXXXXX").string();
    require(mkdtemp(name.data()), "no folder can be made for the files");
    m_path = name;
}

WorkFolder::~WorkFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(m_path, ignored);
}
