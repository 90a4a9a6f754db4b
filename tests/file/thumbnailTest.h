// What the tests of thumbnails share: materials, blocks, pictures.
#pragma once

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"
#include "mrPieChart.h"
#include "mrTest.h"
#include "mrThumbnails.h"

#include "dgDuctImage.h"
#include "gsTriUtils.h"

/// A layer, tinted when a colour is given.
inline mrFMTexture layer(char const* image, giColour const* tint = nullptr)
{
    return {image, mrTexLayerColour, tint ? 1 : 0, tint ? *tint : giColour()};
}

template <class List, class T>
List list_of(std::initializer_list<T> elements)
{
    List list;
    for (T const& each : elements)
        list.append(each);
    return list;
}

inline mrFMFacet* new_facet(giColour const& colour, std::initializer_list<mrFMTexture> layers = {})
{
    mrMatPropcoSet const properties(mrInitialSize, mrFillLimit);
    return new mrFMFacet(new mrFMPlainMat("plain", properties, 0, colour, 0, 0, 0, 0, 1, utString()),
                         list_of<mrFMTexturecoDList>(layers));
}

/// A material of facets, which it takes over, and of an image, under its own name.
struct Material : mrFileMat
{
    Material(std::initializer_list<mrFMFacet*> facets, dgDuctImage* image = nullptr)
        : mrFileMat(mrMatPropcoSet(mrInitialSize, mrFillLimit),
                    list_of<mrFMFacetcoDListPtrcoPtrcoDList>(facets), table(image))
    {}

    static utStringdgDuctImagecoTablePtrcoPtrcoTable table(dgDuctImage* image)
    {
        utStringdgDuctImagecoTablePtrcoPtrcoTable made(mrInitialSize, mrFillLimit);
        if (image)
            made[image->name()] = image;
        return made;
    }
};

/// Thumbnails of 128 by 96 pixels, with a square for plain materials, one with texture coordinates for those
/// of one textured facet, two for those of three facets, and slices for the rest.
class ThumbnailTest : public testing::Test
{
protected:
    ThumbnailTest()
    {
        for (giTriBlock* each : {&plain, &square}) {
            for (giPoint3 const& corner : {giPoint3{-1, -1, 0}, {1, -1, 0}, {1, 1, 0}, {-1, 1, 0}})
                gsTriUtils::check_out_nodes(*each).append(corner);
            gsTriUtils::check_out_normals(*each).assign(4, giVector3(0, 0, 1));
            gsTriUtils::check_out_triangles(*each) = {{0, 1, 2}, {0, 2, 3}};
        }
        for (giPoint2 const& corner : {giPoint2{0, 0}, {1, 0}, {1, 1}, {0, 1}})
            gsTriUtils::check_out_tus(square).append(corner);
        for (int key : {1, 3})
            table[key] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        table[1]->append(&square);
        table[3]->append(&square);
        table[3]->append(&square);
    }

    ~ThumbnailTest() override
    {
        if (picture)
            picture->unreference();
    }

    mrThumbnails on(dgRenderer* renderer)
    {
        return {renderer, mrThumbAtts(128, 96, gsRGB(180, 181, 182), background, {0, 1, 0}, {0, 0, 1},
                                      plain_block, &table, &pie_chart)};
    }

    /// Gives the last picture back and looks at another, which must be a thumbnail.
    void take(dgDuctImage* other)
    {
        if (picture)
            picture->unreference();
        picture = other ? other : new dgDuctImage("none", 1, 1);
        EXPECT_STREQ(picture->name(), "thumb");
        EXPECT_EQ(picture->width(), 128);
        EXPECT_EQ(picture->height(), 96);
    }

    /// The colour this far to the right of the middle and above it.
    gsRGB pixel(double x, double y) const
    {
        short c[4] = {};
        picture->get_pixel(static_cast<int>(64 + x), static_cast<int>(48 - y), c);
        EXPECT_EQ(c[3], 255);
        return {c[0], c[1], c[2]};
    }

    gsRGB const background{51, 102, 153};
    giTriBlock plain, square;
    giTriBlock const* plain_block = &plain;
    mrThumbAtts::FaceCountTable table{mrInitialSize, mrFillLimit};
    mrPieChart pie_chart;
    dgDuctImage* picture = nullptr;
};
