#include "picture.h"

#include <algorithm>
#include <cmath>

namespace {

/// Pixels from the top left, made transparent: a texture's alpha has no say.
dgDuctImage* image_of(int width, std::vector<Pixel> const& pixels)
{
    auto* const image = new dgDuctImage("", width, static_cast<int>(pixels.size()) / width);
    unsigned char* at = image->pixels();
    for (Pixel const& each : pixels) {
        at = std::copy(each.begin(), each.end(), at);
        at[-1] = 0;
    }
    return image;
}

using dgOffscreenTextureTest = Pictures;

} // namespace

TEST_F(dgOffscreenTextureTest, StandsUprightAndRepeats)
{
    Square square{.coordinates = {{0, 0}, {2, 0}, {0, 2}, {2, 2}}};
    square.image = image_of(2, {red, green, white, black});
    Image const repeated = draw({square});
    for (int const x : {15, 61}) {
        EXPECT_THAT(pixel(*repeated, x, 15), near(red, 12));
        EXPECT_THAT(pixel(*repeated, x, 38), near(white, 12));
    }
    EXPECT_THAT(pixel(*repeated, 38, 61), near(green, 12));
}

TEST_F(dgOffscreenTextureTest, OnlyLiesWhereEachNodeHasACoordinate)
{
    auto const drawn = [](std::vector<giPoint2> const& coordinates) {
        return middle({.coordinates = coordinates, .image = image_of(1, {green})});
    };
    for (std::size_t const count : {0U, 3U, 5U})
        EXPECT_EQ(drawn(std::vector<giPoint2>(count)), white) << count;
    // Coordinates that are no number or far away are drawn somehow.
    EXPECT_EQ(drawn({{NAN, 0}, {0, HUGE_VAL}, {1e300, 0}, {0, -1e300}}), green);
}

TEST_F(dgOffscreenTextureTest, OneTooLargeIsScaledDown)
{
    std::vector<Pixel> pixels(200'000, red); // more on a side than any driver takes
    std::fill(pixels.begin() + 100'000, pixels.end(), green);
    Image const image = draw({{.image = image_of(200'000, pixels)}});
    EXPECT_EQ(pixel(*image, 25, 50), red);
    EXPECT_EQ(pixel(*image, 75, 50), green);
}
