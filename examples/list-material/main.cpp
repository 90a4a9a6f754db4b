// Reads a material file and lists what is in it.
#include "dgDuctImage.h"
#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include <cstdio>

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: list-material FILE\n");
        return 2;
    }
    mrFileMat material;
    mrFileMatReadStatus const status = material.read(argv[1]);
    if (status != mrFileMatReadOK) {
        std::fprintf(stderr, "%s: does not read (status %d)\n", argv[1], status);
        return 1;
    }

    for (mrMatProp const& property : material.file_props())
        std::printf("property %s\n", property.name().c_str());
    for (mrFMFacet const* facet : material.facets()) {
        giColour const& colour = facet->plain_mat().diffuse_colour();
        std::printf("facet %s, colour %d %d %d\n", facet->plain_mat().name().c_str(), colour.red(),
                    colour.green(), colour.blue());
        for (mrFMTexture const& layer : facet->textures())
            std::printf("  layer %s%s\n", layer.image_name().c_str(), layer.recoloured() ? ", tinted" : "");
    }
    for (auto const& [name, image] : material.images())
        std::printf("image %s, %d x %d\n", name.c_str(), image->width(), image->height());
    return 0;
}
