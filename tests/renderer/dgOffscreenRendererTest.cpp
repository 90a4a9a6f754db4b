#include "picture.h"

namespace {

class dgOffscreenRendererTest : public Pictures
{
protected:
    static Image read(int x, int y, int width, int height, short alpha = 255)
    {
        return Image(
            renderer->read_image(dgImageRGBA, "part", x, y, width, height, dgSetAlphaEverywhere, alpha));
    }

    static void erase(double width, double height)
    {
        renderer->erase(giBox2({0, 0}, {width, height}), background, dgEraseColourAndDepth);
    }
};

} // namespace

TEST_F(dgOffscreenRendererTest, ReadsPartsFromTheLowerLeft)
{
    giTriBlock const block = ball(8);
    Image const whole = draw_blocks(gsColour(1, 0, 0), {&block});
    Image const part = read(10, 30, 40, 20, 77);
    ASSERT_TRUE(part);
    EXPECT_STREQ(part->name(), "part");
    EXPECT_EQ(part->references(), 0);
    for (int y = 0; y < 20; ++y)
        for (int x = 0; x < 40; ++x) {
            std::array<int, 4> expected = pixel(*whole, x + 10, side - 30 - 20 + y);
            expected[3] = 77;
            ASSERT_EQ(pixel(*part, x, y), expected) << x << ' ' << y;
        }
}

TEST_F(dgOffscreenRendererTest, GivesNoPictureBeyondTheFrame)
{
    erase(50.5, 40);
    EXPECT_TRUE(read(0, 0, 51, 40));
    EXPECT_FALSE(read(0, 0, 52, 40));
    EXPECT_FALSE(read(1, 0, 51, 40));
    EXPECT_FALSE(read(0, -1, 50, 40));
    EXPECT_FALSE(read(0, 0, 0, 40));
    EXPECT_FALSE(read(2147483647, 0, 2147483647, 1));
}

TEST_F(dgOffscreenRendererTest, GivesNoPictureWhereTheFrameIsImpossible)
{
    std::pair<double, double> const sizes[] = {{200'000, 10}, {10, 200'000}, {9000, 9000},   {1e300, 1},
                                               {-5, 10},      {0, 10},       {10, 0.0 / 0.0}};
    giTriBlock const block = square();
    for (auto const& [width, height] : sizes) {
        erase(width, height);
        renderer->draw(dgProjection(), dgDrawState(), block);
        EXPECT_FALSE(read(0, 0, 1, 1)) << width << ' ' << height;
    }
    EXPECT_TRUE(draw_blocks(gsColour(1, 0, 0), {&block}));
}

TEST_F(dgOffscreenRendererTest, KeepsToTheViewPort)
{
    giTriBlock const block = square();
    dgProjection projection;
    projection.view_port = giBox2({20, 10}, {40, 30});
    projection.scale = 1000;
    // The square's lower left corner comes to (15, 5), outside the viewport.
    projection.centre = {0.015, 0.015, 0};
    renderer->erase(projection.view_port, background, dgEraseColourAndDepth);
    dgDrawState state;
    state.reflection_model = dgReflectionNone;
    renderer->draw(projection, state, block);
    Image const image = read(0, 0, 40, 30);
    ASSERT_TRUE(image);
    EXPECT_EQ(pixel(*image, 20, 19), (std::array{255, 255, 255, 255}));
    // A pixel off: a software renderer was seen to draw half of those along the edge.
    EXPECT_EQ(pixel(*image, 18, 19), background_pixel);
    EXPECT_EQ(pixel(*image, 20, 21), background_pixel);

    projection.centre = {};
    renderer->erase(projection.view_port, background, dgEraseColourAndDepth);
    renderer->draw(projection, state, block);
    Image const other = read(0, 0, 40, 30);
    EXPECT_EQ(pixel(*other, 30, 9), (std::array{255, 255, 255, 255}));
    EXPECT_EQ(pixel(*other, 29, 9), background_pixel);
    EXPECT_EQ(pixel(*other, 30, 10), background_pixel);
}
