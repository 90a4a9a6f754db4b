#include "picture.h"

namespace {

std::array<int, 4> const red{255, 0, 0, 255};
std::array<int, 4> const green{0, 255, 0, 255};
std::array<int, 4> const white{255, 255, 255, 255};
std::array<int, 4> const black{0, 0, 0, 255};

class dgOffscreenTextureTest : public Pictures
{
protected:
    /// Pixels from the top left, each 1 for red, 2 for green, 3 for white, else black.
    static dgDuctImage* image_of(int width, int height, std::initializer_list<int> colours, short alpha = 255)
    {
        auto* const image = new dgDuctImage("", width, height);
        int at = 0;
        for (int const colour : colours) {
            short const components[4] = {static_cast<short>(colour & 1 ? 255 : 0),
                                         static_cast<short>(colour & 2 ? 255 : 0),
                                         static_cast<short>(colour == 3 ? 255 : 0), alpha};
            image->set_pixel(at % width, at / width, components);
            ++at;
        }
        return image;
    }

    static void append_texture(dgStructure& scene, dgDuctImage* image, dgTextureFilterType filter,
                               dgTextureWrapType wrap = dgTextureWrapRepeat)
    {
        scene.append(new dgReflectionModel(dgReflectionNone));
        scene.append(new dgTextureFlag(1, 0));
        scene.append(new dgTexture(image, dgTextureImageAsIs, filter, wrap, dgTextureModulate, 0));
    }

    static Image textured(giTriBlock const& block, dgDuctImage* image, dgTextureFilterType filter,
                          dgTextureWrapType wrap = dgTextureWrapRepeat)
    {
        return draw([&](dgStructure& scene) {
            append_texture(scene, image, filter, wrap);
            append(scene, block, gsColour(1, 1, 1));
        });
    }
};

} // namespace

TEST_F(dgOffscreenTextureTest, StandsUprightAndIsNotMirrored)
{
    // Transparent on purpose: alpha has no say.
    Image const image = textured(square(), image_of(2, 2, {1, 2, 3, 0}, 0), dgTextureFilterNearest);
    EXPECT_EQ(pixel(*image, 25, 25), red);
    EXPECT_EQ(pixel(*image, 75, 25), green);
    EXPECT_EQ(pixel(*image, 25, 75), white);
    EXPECT_EQ(pixel(*image, 75, 75), black);
}

TEST_F(dgOffscreenTextureTest, RepeatsOrClamps)
{
    giTriBlock const block = square(0.0, 0.0, 2.0);
    Image const repeated = textured(block, image_of(2, 2, {1, 2, 3, 0}), dgTextureFilterNearest);
    for (int const x : {4, 50})
        for (int const y : {4, 50}) {
            EXPECT_EQ(pixel(*repeated, x + 11, y + 11), red);
            EXPECT_EQ(pixel(*repeated, x + 34, y + 11), green);
            EXPECT_EQ(pixel(*repeated, x + 11, y + 34), white);
        }
    Image const clamped =
        textured(block, image_of(2, 2, {1, 2, 3, 0}), dgTextureFilterNearest, dgTextureWrapClamp);
    EXPECT_EQ(pixel(*clamped, 75, 25), green);
    EXPECT_EQ(pixel(*clamped, 15, 65), red);
    EXPECT_EQ(pixel(*clamped, 75, 60), green);
}

TEST_F(dgOffscreenTextureTest, FiltersSmoothlyAlsoWhenMadeSmaller)
{
    Image const image = textured(square(), image_of(2, 1, {1, 2}), dgTextureFilterLinear);
    EXPECT_TRUE(close(pixel(*image, 50, 50), {128, 128, 0, 255}, 4));

    // Stripes much finer than pixels show as their average.
    auto* const stripes = new dgDuctImage("", 1024, 1024);
    for (std::size_t at = 0; at < stripes->byte_count(); ++at)
        stripes->pixels()[at] = at / 4 % 2 ? 255 : 0;
    Image const fine = textured(square(), stripes, dgTextureFilterLinear);
    EXPECT_TRUE(close(pixel(*fine, 33, 40), {128, 128, 128, 255}, 4));
}

TEST_F(dgOffscreenTextureTest, ModulatesTheLitSurface)
{
    giTriBlock const block = square();
    Image const image = draw([&](dgStructure& scene) {
        append_texture(scene, image_of(1, 1, {1}), dgTextureFilterLinear);
        scene.append(new dgReflectionModel(dgReflectionBlinnPhong));
        append(scene, block, gsColour(200 / 255.0, 200 / 255.0, 0));
    });
    // The highlight is added after the texture, so a little of it is in all channels.
    EXPECT_TRUE(close(pixel(*image, 50, 50), {204, 5, 5, 255}, 3));
}

TEST_F(dgOffscreenTextureTest, EachBlockShowsItsOwnOrNone)
{
    giTriBlock const left = square(0.0);
    giTriBlock const middle = square(1.0);
    giTriBlock const right = square(2.0);
    giTriBlock const flagged = square(3.0);
    Image const image = draw([&](dgStructure& scene) {
        append_texture(scene, image_of(1, 1, {1}), dgTextureFilterLinear);
        append(scene, left, gsColour(1, 1, 1));
        append_texture(scene, image_of(1, 1, {2}), dgTextureFilterLinear);
        append(scene, middle, gsColour(1, 1, 1));
        append(scene, right, gsColour(0, 0, 0));
        append_texture(scene, nullptr, dgTextureFilterLinear);
        append(scene, flagged, gsColour(0, 0, 0));
    });
    EXPECT_EQ(pixel(*image, 16, 50), red);
    EXPECT_EQ(pixel(*image, 38, 50), green);
    EXPECT_EQ(pixel(*image, 62, 50), black);
    EXPECT_EQ(pixel(*image, 84, 50), black);
}

TEST_F(dgOffscreenTextureTest, OneTooLargeIsScaledDown)
{
    int const width = 200'000; // more than any driver takes
    auto* const image = new dgDuctImage("", width, 1);
    for (int x = 0; x < width; ++x) {
        short const components[4] = {static_cast<short>(x < width / 2 ? 255 : 0),
                                     static_cast<short>(x < width / 2 ? 0 : 255), 0, 0};
        image->set_pixel(x, 0, components);
    }
    Image const drawn = textured(square(), image, dgTextureFilterLinear);
    EXPECT_EQ(pixel(*drawn, 25, 50), red);
    EXPECT_EQ(pixel(*drawn, 75, 50), green);
}
