// Thumbnails as pictures: what the real renderer makes of what the library asks of it.
#include "mrThumbnails.h"

#include "thumbnailTest.h"

#include "dgOffscreenRenderer.h"

#include <algorithm>
#include <cmath>
#include <numbers>

namespace {

gsRGB const red(255, 0, 0), green(0, 255, 0), blue(0, 0, 255), yellow(255, 255, 0), white(255, 255, 255);
giColour const orange(200, 100, 50, 0);

mrFMFacet* facet(gsRGB const& c, std::initializer_list<mrFMTexture> layers = {})
{
    auto const byte = [](int component) { return static_cast<unsigned char>(component); };
    return new_facet(giColour(byte(c.red()), byte(c.green()), byte(c.blue()), 0), layers);
}

/// The colour of full and missing components that a shaded one comes from.
gsRGB unshaded(gsRGB const& c)
{
    int const half = std::max({c.red(), c.green(), c.blue()}) / 2;
    return {c.red() > half ? 255 : 0, c.green() > half ? 255 : 0, c.blue() > half ? 255 : 0};
}

class mrThumbnailsPictureTest : public ThumbnailTest
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
    }

    void draw(mrFileMat const& material) { take(on(renderer).from_material(material)); }

    /// Expects the colour to within 8 of 255: light leaves a surface that faces the viewer nearly as it is.
    void expect_colour(double x, double y, gsRGB const& colour) const
    {
        gsRGB const found = pixel(x, y);
        EXPECT_NEAR(found.red(), colour.red(), 8);
        EXPECT_NEAR(found.green(), colour.green(), 8);
        EXPECT_NEAR(found.blue(), colour.blue(), 8);
    }

    static inline dgOffscreenRenderer* renderer = nullptr;
};

} // namespace

TEST_F(mrThumbnailsPictureTest, SlicesRunCounterClockwiseFromThreeOClock)
{
    gsRGB const colours[] = {red, green, blue, yellow};
    draw(Material({facet(red), facet(green), facet(blue), facet(yellow)}));
    double const radius = 0.8 * 0.46 * 96; // towards the rim, past the highlight
    for (int degrees : {5, 45, 85, 95, 135, 175, 185, 225, 265, 275, 315, 355}) {
        double const angle = degrees * std::numbers::pi / 180.0;
        gsRGB const found = pixel(radius * std::cos(angle), radius * std::sin(angle));
        EXPECT_EQ(unshaded(found), colours[degrees / 90]) << degrees;
    }
    EXPECT_EQ(pixel(-64, 48), background);
    EXPECT_EQ(pixel(63, -47), background);
}

TEST_F(mrThumbnailsPictureTest, FacingSurfacesShowTheirColoursAndTexturesUpright)
{
    draw(Material({facet(gsRGB(200, 30, 30))}));
    expect_colour(0, 0, gsRGB(200, 30, 30));

    auto* const image = new dgDuctImage("quarters", 64, 64); // red and green above, blue and white below
    image->reference();
    for (int y = 0; y < 64; ++y)
        for (int x = 0; x < 64; ++x) {
            gsRGB const& c = y < 32 ? (x < 32 ? red : green) : (x < 32 ? blue : white);
            short const pixel[] = {short(c.red()), short(c.green()), short(c.blue()), 255};
            image->set_pixel(x, y, pixel);
        }
    auto const expect_quarters = [&](giColour const* tint, std::initializer_list<gsRGB> colours) {
        draw(Material({facet(white, {layer("quarters", tint)})}, image));
        gsRGB const* colour = colours.begin();
        for (double y : {22.0, -22.0})
            for (double x : {-22.0, 22.0})
                expect_colour(x, y, *colour++);
    };
    expect_quarters(nullptr, {red, green, blue, white});
    expect_quarters(&orange, {gsRGB(200, 0, 0), gsRGB(0, 100, 0), gsRGB(0, 0, 50), gsRGB(200, 100, 50)});

    draw(Material({facet(white, {layer("quarters")}), facet(yellow)}, image));
    EXPECT_EQ(unshaded(pixel(22, 22)), green);
    EXPECT_EQ(unshaded(pixel(22, -22)), yellow);
    image->unreference();
}

TEST_F(mrThumbnailsPictureTest, AMeshAndAListOfItAreSeenAlike)
{
    giTriBlock& dome = **pie_chart.blocks(1).begin();
    dgDuctImage* const from_list =
        on(renderer).from_meshes(list_of<giTriBlockcoDListPtrcoPtrcoDList>({&dome}));
    take(on(renderer).from_mesh(dome));
    EXPECT_TRUE(picture->equal(from_list));
    from_list->unreference();
    EXPECT_EQ(pixel(0, 40), background); // the dome is seen from its side, a third as high as wide
    EXPECT_GT(pixel(0, 0).red(), 90);
}
