#include "gsImageUtils.h"

#include "mrTest.h"

#include <array>

namespace {

std::array<int, 4> placed(int source_width, int source_height, int width, int height)
{
    std::array<int, 4> at{};
    gsImageUtils::stretch_rectangle(source_width, source_height, width, height, at[0], at[1], at[2], at[3]);
    return at;
}

using Rectangle = std::array<int, 4>;

} // namespace

TEST(GsImageUtils, CentresAPictureWithItsAspectAndNeverEnlargesIt)
{
    EXPECT_EQ(placed(256, 256, 256, 256), (Rectangle{0, 0, 256, 256}));
    EXPECT_EQ(placed(100, 50, 256, 256), (Rectangle{78, 103, 100, 50}));
    EXPECT_EQ(placed(512, 256, 256, 256), (Rectangle{0, 64, 256, 128}));
    EXPECT_EQ(placed(256, 1024, 256, 128), (Rectangle{112, 0, 32, 128}));
    EXPECT_EQ(placed(300, 200, 100, 100), (Rectangle{0, 16, 100, 67}));
    EXPECT_EQ(placed(1, 1, 1, 1), (Rectangle{0, 0, 1, 1}));
}

TEST(GsImageUtils, LeavesAtLeastAPixelWithinThePicture)
{
    EXPECT_EQ(placed(100000, 1, 256, 256), (Rectangle{0, 127, 256, 1}));
    EXPECT_EQ(placed(1, 2147483647, 64, 64), (Rectangle{31, 0, 1, 64}));
    EXPECT_EQ(placed(0, -5, 64, 64), (Rectangle{31, 31, 1, 1}));
    EXPECT_EQ(placed(100, 100, 0, -1), (Rectangle{0, 0, 1, 1}));
}
