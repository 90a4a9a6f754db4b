#include "gsColour.h"

#include "mrTest.h"

#include <cmath>

TEST(GsColour, RoundsToTheNearestByteAndStaysInRange)
{
    auto const rgb = [](gsColour const& colour) {
        gsRGB result(1, 2, 3);
        colour.rgb(result);
        return result;
    };
    EXPECT_EQ(rgb({0.4 / 255, 0.6 / 255, 254.4 / 255}), gsRGB(0, 1, 254));
    EXPECT_EQ(rgb({NAN, -INFINITY, INFINITY}), gsRGB(0, 0, 255));
    for (int value = 0; value < 256; ++value)
        EXPECT_EQ(rgb(gsColour(gsRGB(value, 255 - value, 7))), gsRGB(value, 255 - value, 7));
}
