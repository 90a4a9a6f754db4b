#include "gsImageUtils.h"

#include "mrTest.h"

#include <array>

TEST(gsImageUtils, CentresAPictureWithItsAspectAndNeverEnlargesIt)
{
    struct Case
    {
        int source_width, source_height, width, height;
        std::array<int, 4> rectangle;
    };
    for (Case const& each :
         {Case{100, 50, 256, 256, {78, 103, 100, 50}}, Case{512, 256, 256, 256, {0, 64, 256, 128}},
          Case{256, 1024, 256, 128, {112, 0, 32, 128}}, Case{300, 200, 100, 100, {0, 16, 100, 67}},
          Case{200, 300, 100, 100, {16, 0, 67, 100}},
          // At least a pixel.
          Case{100000, 1, 256, 256, {0, 127, 256, 1}}, Case{1, 2147483647, 64, 64, {31, 0, 1, 64}},
          Case{0, -5, 64, 64, {31, 31, 1, 1}}, Case{100, 100, 0, -1, {0, 0, 1, 1}}}) {
        std::array<int, 4> at{};
        gsImageUtils::stretch_rectangle(each.source_width, each.source_height, each.width, each.height, at[0],
                                        at[1], at[2], at[3]);
        EXPECT_EQ(at, each.rectangle) << each.source_width << " x " << each.source_height;
    }
}
