// Materials and blocks for the tests of thumbnails.
#pragma once

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include "dgDuctImage.h"
#include "gsTriUtils.h"

#include <initializer_list>
#include <vector>

/// A facet of the colour, with the layers.
inline mrFMFacet* new_facet(giColour const& colour, std::initializer_list<mrFMTexture> layers = {})
{
    mrFMTexturecoDList list;
    for (mrFMTexture const& layer : layers)
        list.append(layer);
    mrMatPropcoSet const properties(mrInitialSize, mrFillLimit);
    return new mrFMFacet(new mrFMPlainMat("plain", properties, 0, colour, 0, 0, 0, 0, 1, utString()), list);
}

inline mrFMTexture layer(char const* image, giColour const* tint = nullptr)
{
    return {image, mrTexLayerColour, tint ? 1 : 0, tint ? *tint : giColour()};
}

/// A material of facets and images, named as they are; it takes over the former and references the latter.
struct Material : mrFileMat
{
    Material(std::initializer_list<mrFMFacet*> facets, std::initializer_list<dgDuctImage*> images = {})
        : mrFileMat(mrMatPropcoSet(mrInitialSize, mrFillLimit), list(facets), table(images))
    {}

private:
    static mrFMFacetcoDListPtrcoPtrcoDList list(std::initializer_list<mrFMFacet*> facets)
    {
        mrFMFacetcoDListPtrcoPtrcoDList made;
        for (mrFMFacet* facet : facets)
            made.append(facet);
        return made;
    }

    static utStringdgDuctImagecoTablePtrcoPtrcoTable table(std::initializer_list<dgDuctImage*> images)
    {
        utStringdgDuctImagecoTablePtrcoPtrcoTable made(mrInitialSize, mrFillLimit);
        for (dgDuctImage* image : images)
            made[image->name()] = image;
        return made;
    }
};

/// A square from (-1, -1) to (1, 1) that faces +z, with texture coordinates from (0, 0) to (1, 1) if wanted.
inline void fill_square(giTriBlock& block, bool with_tus = false)
{
    for (giPoint2 const corner : {giPoint2{0, 0}, giPoint2{1, 0}, giPoint2{1, 1}, giPoint2{0, 1}}) {
        gsTriUtils::check_out_nodes(block).append({2 * corner.x - 1, 2 * corner.y - 1, 0});
        gsTriUtils::check_out_normals(block).emplace_back(0, 0, 1);
        if (with_tus)
            gsTriUtils::check_out_tus(block).append(corner);
    }
    gsTriUtils::check_out_triangles(block) = {{0, 1, 2}, {0, 2, 3}};
}
