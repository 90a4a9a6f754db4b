#include "gsColour.h"

#include "mrTest.h"

#include <cmath>

namespace {

gsRGB rgb(gsColour const& colour)
{
    gsRGB result(1, 2, 3);
    colour.rgb(result);
    return result;
}

} // namespace

TEST(GsColour, BringsEveryByteBack)
{
    for (int value = 0; value < 256; ++value) {
        gsRGB const colour(value, 255 - value, value / 2);
        EXPECT_EQ(rgb(gsColour(colour)), colour) << value;
    }
}

TEST(GsColour, RoundsToTheNearestAndStaysInRange)
{
    EXPECT_EQ(rgb({0.4 / 255, 0.6 / 255, 254.4 / 255}), gsRGB(0, 1, 254));
    EXPECT_EQ(rgb({0.5, 254.6 / 255, 1.0}), gsRGB(128, 255, 255));
    EXPECT_EQ(rgb({-0.5, 1.5, 1e300}), gsRGB(0, 255, 255));
    EXPECT_EQ(rgb({NAN, -INFINITY, INFINITY}), gsRGB(0, 0, 255));
    EXPECT_EQ(rgb(gsColour()), gsRGB(0, 0, 0));
}
