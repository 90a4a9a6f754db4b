#include "gr_stretch_blt.h"

#include "mrTest.h"
#include "testImage.h"

#include <utility>
#include <vector>

namespace {

constexpr Pixel white{255, 255, 255, 255};
constexpr Pixel nothing{0, 0, 0, 0};

/// An image whose pixels are given by a function of x and y.
template <class Colour>
Image painted(int width, int height, Colour const& colour)
{
    Image image(new dgDuctImage("", width, height));
    for (int y = 0; y < height; ++y)
        for (int x = 0; x < width; ++x)
            image->set_pixel(x, y, colour(x, y).data());
    return image;
}

Image plain(int width, int height, Pixel const& colour)
{
    return painted(width, height, [&colour](int, int) { return colour; });
}

Pixel gradient(int x, int y)
{
    return {static_cast<short>(x * 5), static_cast<short>(y * 6), static_cast<short>(x + y), 255};
}

/// Lays the whole of one image over the whole of another.
void lay(Image const& source, Image const& onto)
{
    gr_stretch_blt(*onto, 0, 0, onto->width(), onto->height(), *source, 0, 0, source->width(),
                   source->height(), grStretchBltAverage);
}

TEST(gr_stretch_blt, TheBackgroundShowsThrough)
{
    Image const half_red = plain(4, 4, {200, 0, 0, 51});
    Image const over_blue = plain(2, 2, {0, 0, 100, 255});
    lay(half_red, over_blue);
    EXPECT_EQ(pixel(*over_blue, 1, 1), (Pixel{40, 0, 80, 255}));

    Image const over_nothing = plain(2, 2, {9, 9, 9, 0});
    lay(half_red, over_nothing);
    EXPECT_EQ(pixel(*over_nothing, 0, 0), (Pixel{200, 0, 0, 51}));

    // Transparent pixels lend no colour.
    Image const over_white = plain(2, 2, white);
    lay(painted(5, 5, [](int x, int) { return x % 2 ? white : nothing; }), over_white);
    EXPECT_TRUE(over_white->equal(plain(2, 2, white).get()));
}

TEST(gr_stretch_blt, ScalingTakesEveryPixelAlike)
{
    auto const strip = [](std::vector<short> const& reds, bool upright) {
        int const length = static_cast<int>(reds.size());
        return painted(upright ? 1 : length, upright ? length : 1, [&reds](int x, int y) {
            return Pixel{reds[static_cast<std::size_t>(x + y)], 0, 0, 255};
        });
    };
    std::pair<std::vector<short>, std::vector<short>> const cases[] = {
        {{90, 30, 240}, {70, 170}}, {{0, 255}, {128}}, {{0, 80, 7}, {0, 80, 7}}};
    for (auto const& [before, after] : cases)
        for (bool const upright : {false, true}) {
            Image const picture = strip(std::vector<short>(after.size()), upright);
            lay(strip(before, upright), picture);
            EXPECT_TRUE(picture->equal(strip(after, upright).get())) << after.size() << upright;
        }
}

TEST(gr_stretch_blt, OnlyTheRectanglesCountWhereTheyLieWithin)
{
    Image const source = painted(50, 40, gradient);
    // The same size is a copy: right way up, right way round, and nothing beside the rectangle.
    Image const expected = painted(30, 30, [](int x, int y) {
        return x >= 5 && x < 25 && y >= 7 && y < 22 ? gradient(x + 6, y - 4) : white;
    });
    int const bad[][4] = {{-1, 0, 5, 5}, {0, 36, 5, 5}, {0, 0, 0, 5}, {2, 2, 2147483647, 1}};
    Image const picture = plain(30, 30, white);
    for (auto const& [x, y, width, height] : bad) {
        gr_stretch_blt(*picture, x, y, width, height, *source, 0, 0, 5, 5, grStretchBltAverage);
        gr_stretch_blt(*picture, 0, 0, 5, 5, *source, x, y, width, height, grStretchBltAverage);
    }
    gr_stretch_blt(*picture, 0, 0, 5, 6, *source, 0, 0, 5, 5, grStretchBltAverage);
    gr_stretch_blt(*picture, 5, 7, 20, 15, *source, 11, 3, 20, 15, grStretchBltAverage);
    EXPECT_TRUE(picture->equal(expected.get()));
}

} // namespace
