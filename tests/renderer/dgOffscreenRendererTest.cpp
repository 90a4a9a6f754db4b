#include "picture.h"

using dgOffscreenRendererTest = Pictures;

namespace {

Image read(int x, int y, int width, int height)
{
    return Image(
        Pictures::renderer->read_image(dgImageRGBA, "part", x, y, width, height, dgSetAlphaEverywhere, 255));
}

} // namespace

TEST_F(dgOffscreenRendererTest, GivesNoPictureBeyondTheFrameOrOfAnImpossibleOne)
{
    renderer->erase(giBox2({0, 0}, {50.5, 40}), gsColour(), dgEraseColourAndDepth);
    EXPECT_TRUE(read(0, 0, 51, 40));
    EXPECT_FALSE(read(1, 0, 51, 40));
    EXPECT_FALSE(read(0, -1, 50, 40));
    EXPECT_FALSE(read(0, 0, 0, 40));
    EXPECT_FALSE(read(2147483647, 0, 2147483647, 1));

    giPoint2 const sizes[] = {{10, 200'000}, {9000, 9000}, {1e300, 1}, {-5, 10}, {0, 10}, {10, 0.0 / 0.0}};
    for (giPoint2 const& size : sizes) {
        renderer->erase(giBox2({0, 0}, size), gsColour(), dgEraseColourAndDepth);
        renderer->draw(dgProjection(), dgDrawState(), block_of({}));
        EXPECT_FALSE(read(0, 0, 1, 1)) << size.x << ' ' << size.y;
    }
    EXPECT_TRUE(draw({Square()}));
}

TEST_F(dgOffscreenRendererTest, KeepsToTheViewPort)
{
    dgProjection projection;
    projection.view_port = giBox2({20, 10}, {40, 30});
    projection.scale = 1000;
    dgDrawState state;
    state.reflection_model = dgReflectionNone;
    auto const drawn = [&](giPoint3 const& centre, int width = 40, int height = 30) {
        projection.centre = centre;
        renderer->erase(giBox2({0, 0}, {double(width), double(height)}), gsColour(0, 0, 1),
                        dgEraseColourAndDepth);
        renderer->draw(projection, state, block_of({}));
        return read(0, 0, width, height);
    };
    // The square's lower left corner comes to (15, 5), outside the viewport.
    Image const over = drawn({0.015, 0.015, 0});
    EXPECT_EQ(pixel(*over, 20, 19), white);
    // Of those along the edge a software renderer was seen to draw half.
    EXPECT_EQ(pixel(*over, 19, 19), background);
    EXPECT_EQ(pixel(*over, 20, 20), background);

    // Also in a frame that reaches further: beyond (40, 30) it stays as it was erased.
    Image const beyond = drawn({0.01, 0.01, 0}, 50, 40);
    EXPECT_EQ(pixel(*beyond, 39, 10), white);
    EXPECT_EQ(pixel(*beyond, 40, 10), background);
    EXPECT_EQ(pixel(*beyond, 39, 9), background);

    Image const within = drawn({0, 0, 0});
    EXPECT_EQ(pixel(*within, 30, 9), white);
    EXPECT_EQ(pixel(*within, 29, 9), background);
    EXPECT_EQ(pixel(*within, 30, 10), background);
}
