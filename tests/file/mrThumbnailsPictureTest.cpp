// Thumbnails as pictures: what the real renderer makes of what the library asks of it.
#include "mrThumbnails.h"

#include "materials.h"
#include "mrPieChart.h"
#include "mrRecolouredImageCache.h"
#include "mrTest.h"

#include "dgOffscreenRenderer.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>

namespace {

constexpr int width = 128;
constexpr int height = 96;

gsRGB const background(51, 102, 153);

using Pixel = std::array<short, 4>;

Pixel pixel(dgDuctImage const& picture, double x, double y)
{
    Pixel components{};
    picture.get_pixel(static_cast<int>(x), static_cast<int>(y), components.data());
    return components;
}

/// Within 8 of 255: light on a surface that faces the viewer leaves its colour nearly as it is.
void expect_colour(Pixel const& found, giColour const& colour)
{
    EXPECT_NEAR(found[0], colour.red(), 8);
    EXPECT_NEAR(found[1], colour.green(), 8);
    EXPECT_NEAR(found[2], colour.blue(), 8);
    EXPECT_EQ(found[3], 255);
}

/// The colour of full and missing components that a shaded one comes from.
giColour pure(Pixel const& shaded)
{
    int const brightest = std::max({shaded[0], shaded[1], shaded[2]});
    auto const full = [&](short component) {
        return static_cast<unsigned char>(component > brightest / 2 ? 255 : 0);
    };
    return {full(shaded[0]), full(shaded[1]), full(shaded[2]), 0};
}

giColour const red(255, 0, 0, 0);
giColour const green(0, 255, 0, 0);
giColour const blue(0, 0, 255, 0);
giColour const yellow(255, 255, 0, 0);
giColour const white(255, 255, 255, 0);

/// Four quarters: red and green above, blue and white below.
dgDuctImage* quarters()
{
    auto* const image = new dgDuctImage("quarters", 64, 64);
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            giColour const& colour = y < 32 ? (x < 32 ? red : green) : (x < 32 ? blue : white);
            short const components[] = {colour.red(), colour.green(), colour.blue(), 255};
            image->set_pixel(x, y, components);
        }
    return image;
}

class mrThumbnailsPictureTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        utString reason;
        renderer = dgOffscreenRenderer::create(reason);
        ASSERT_TRUE(renderer) << reason.c_str();
        renderer->reference();
    }

    static void TearDownTestSuite()
    {
        if (renderer)
            renderer->unreference();
        mrRecolouredImageCache::singleton().clear();
    }

    mrThumbnailsPictureTest()
    {
        fill_square(square, true);
        table[1] = std::make_unique<giTriBlockcoDListPtrcoPtrcoDList>();
        table[1]->append(&square);
    }

    ~mrThumbnailsPictureTest() override
    {
        for (dgDuctImage* picture : pictures)
            picture->unreference();
    }

    mrThumbnails thumbnails()
    {
        return {renderer, mrThumbAtts(width, height, gsRGB(180, 180, 180), background, {0, 1, 0}, {0, 0, 1},
                                      &square, &table, &pie_chart)};
    }

    /// Takes over a picture of the right name and size.
    dgDuctImage const& take(dgDuctImage* picture)
    {
        pictures.push_back(picture ? picture : new dgDuctImage("missing", 1, 1));
        EXPECT_STREQ(pictures.back()->name(), "thumb");
        EXPECT_EQ(pictures.back()->width(), width);
        EXPECT_EQ(pictures.back()->height(), height);
        return *pictures.back();
    }

    static inline dgOffscreenRenderer* renderer = nullptr;
    giTriBlock square;
    mrThumbAtts::FaceCountTable table{mrInitialSize, mrFillLimit};
    mrPieChart pie_chart;
    std::vector<dgDuctImage*> pictures;
};

} // namespace

TEST_F(mrThumbnailsPictureTest, AFacingSurfaceShowsItsColourOnTheBackground)
{
    giColour const colour(200, 30, 30, 0);
    dgDuctImage const& picture = take(thumbnails().from_material(Material({new_facet(colour)})));
    expect_colour(pixel(picture, width / 2, height / 2), colour);
    for (int x : {0, width - 1})
        for (int y : {0, height - 1})
            EXPECT_EQ(pixel(picture, x, y), (Pixel{51, 102, 153, 255}));

    dgDuctImage const& nothing = take(thumbnails().from_material(Material({})));
    EXPECT_EQ(pixel(nothing, width / 2, height / 2), (Pixel{51, 102, 153, 255}));
    EXPECT_EQ(reports().size(), 2u);
}

TEST_F(mrThumbnailsPictureTest, SlicesRunCounterClockwiseFromThreeOClock)
{
    giColour const colours[] = {red, green, blue, yellow};
    dgDuctImage const& picture = take(thumbnails().from_material(
        Material({new_facet(red), new_facet(green), new_facet(blue), new_facet(yellow)})));
    // The dome fills the height but for 4 % above and below; the samples lie towards its rim.
    double const radius = 0.8 * 0.46 * height;
    for (int degrees : {5, 45, 85, 95, 135, 175, 185, 225, 265, 275, 315, 355}) {
        double const angle = degrees * std::numbers::pi / 180.0;
        Pixel const found =
            pixel(picture, width / 2.0 + radius * std::cos(angle), height / 2.0 - radius * std::sin(angle));
        EXPECT_EQ(pure(found), colours[degrees / 90]) << degrees;
    }
}

TEST_F(mrThumbnailsPictureTest, TexturesAreUprightAndTinted)
{
    dgDuctImage* const image = quarters();
    image->reference();
    double const x = 0.23 * height; // from the middle of the picture to the middle of a quarter
    auto const expect_quarters = [&](giColour const* tint, std::array<giColour, 4> const& colours) {
        dgDuctImage const& picture = take(
            thumbnails().from_material(Material({new_facet(white, {layer("quarters", tint)})}, {image})));
        expect_colour(pixel(picture, width / 2.0 - x, height / 2.0 - x), colours[0]);
        expect_colour(pixel(picture, width / 2.0 + x, height / 2.0 - x), colours[1]);
        expect_colour(pixel(picture, width / 2.0 - x, height / 2.0 + x), colours[2]);
        expect_colour(pixel(picture, width / 2.0 + x, height / 2.0 + x), colours[3]);
    };
    expect_quarters(nullptr, {red, green, blue, white});
    giColour const orange(200, 100, 50, 0);
    expect_quarters(&orange, {giColour(200, 0, 0, 0), giColour(0, 100, 0, 0), giColour(0, 0, 50, 0), orange});
    image->unreference();
}

TEST_F(mrThumbnailsPictureTest, APlainSliceAfterATexturedOneShowsItsOwnColour)
{
    auto* const image = new dgDuctImage("blue", 8, 8);
    image->set_all(gsColour(0, 0, 1));
    dgDuctImage const& picture = take(thumbnails().from_material(
        Material({new_facet(white, {layer("blue")}), new_facet(yellow)}, {image})));
    EXPECT_EQ(pure(pixel(picture, width / 2, 0.2 * height)), blue);
    EXPECT_EQ(pure(pixel(picture, width / 2, 0.8 * height)), yellow);
}

TEST_F(mrThumbnailsPictureTest, MeshesAreSeenAsTheAttributesSay)
{
    // Half a wall: seen from +y with z up, +x is to the left, so its right angle is at the lower right.
    giTriBlock wall;
    for (giPoint3 const& corner :
         {giPoint3{0, 0, 0}, giPoint3{-2, 0, 0}, giPoint3{-2, 0, 1}, giPoint3{0, 0, 1}}) {
        gsTriUtils::check_out_nodes(wall).append(corner);
        gsTriUtils::check_out_normals(wall).emplace_back(0, 1, 0);
    }
    gsTriUtils::check_out_triangles(wall) = {{0, 1, 2}};

    dgDuctImage const& one = take(thumbnails().from_mesh(wall));
    giTriBlockcoDListPtrcoPtrcoDList list;
    list.append(&wall);
    EXPECT_TRUE(one.equal(&take(thumbnails().from_meshes(list))));

    Pixel const inside = pixel(one, 0.8 * width, 0.6 * height);
    EXPECT_NE(inside, (Pixel{51, 102, 153, 255}));
    EXPECT_NEAR(inside[0], inside[2], 1);
    EXPECT_EQ(pixel(one, 0.2 * width, 0.35 * height), (Pixel{51, 102, 153, 255}));
}
