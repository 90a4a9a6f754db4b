#include "mrColourUtils.h"

#include "mrTest.h"

#include <array>
#include <limits>
#include <tuple>

TEST(mrColourUtils, GivesEveryColourBack)
{
    for (int packed = 0; packed < 1 << 24; ++packed) {
        gsRGB const colour(packed >> 16, packed >> 8, packed);
        std::array<double, 3> hls{};
        mrColourUtils::rgb2hls(colour, hls.data());
        bool const in_range = hls[0] >= 0.0 && hls[0] < 360.0 && hls[1] >= 0.0 && hls[1] <= 1.0 &&
                              hls[2] >= 0.0 && hls[2] <= 1.0;
        ASSERT_TRUE(in_range) << std::hex << packed;
        ASSERT_EQ(mrColourUtils::hls2rgb(hls.data()), colour) << std::hex << packed;
    }
}

TEST(mrColourUtils, GivesHueLightnessAndSaturation)
{
    using Case = std::tuple<gsRGB, double, double, double>;
    for (auto const& [colour, hue, lightness, saturation] :
         {Case{{0, 0, 0}, 0.0, 0.0, 0.0}, Case{{255, 255, 255}, 0.0, 1.0, 0.0},
          Case{{255, 255, 0}, 60.0, 0.5, 1.0}, Case{{255, 0, 51}, 348.0, 0.5, 1.0},
          Case{{51, 102, 153}, 210.0, 0.4, 0.5}, Case{{204, 255, 204}, 120.0, 0.9, 1.0}}) {
        EXPECT_NEAR(mrColourUtils::hue(colour), hue, 1e-12);
        EXPECT_NEAR(mrColourUtils::lightness(colour), lightness, 1e-12);
        EXPECT_NEAR(mrColourUtils::saturation(colour), saturation, 1e-12);
    }
}

TEST(mrColourUtils, TakesAnyTripleForAColour)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    double const infinity = std::numeric_limits<double>::infinity();
    using Case = std::tuple<std::array<double, 3>, gsRGB>;
    for (auto [hls, colour] : {Case{{-120.0, 0.5, 1.0}, {0, 0, 255}}, Case{{840.0, 0.5, 1.0}, {0, 255, 0}},
                               Case{{-1e-300, 0.5, 1.0}, {255, 0, 0}}, Case{{0.0, 0.5, 3.0}, {255, 0, 0}},
                               Case{{nan, 0.5, 1.0}, {255, 0, 0}}, Case{{infinity, 0.5, 1.0}, {255, 0, 0}},
                               Case{{0.0, nan, 1.0}, {0, 0, 0}}, Case{{0.0, 1e300, 0.0}, {255, 255, 255}}})
        EXPECT_EQ(mrColourUtils::hls2rgb(hls.data()), colour) << hls[0];
}

TEST(mrColourUtils, FindsNearlyBlackAndNearlyWhiteAchromatic)
{
    int const most = std::numeric_limits<int>::max();
    using Case = std::tuple<gsRGB, int, int>;
    for (auto const& [colour, tolerance, achromatic] :
         {Case{{0, 0, 0}, 0, 1}, Case{{255, 255, 255}, 0, 1}, Case{{10, 5, 0}, 10, 1},
          Case{{11, 0, 0}, 10, 0}, Case{{250, 251, 255}, 5, 1}, Case{{249, 255, 255}, 5, 0},
          Case{{128, 128, 128}, 126, 0}, Case{{128, 128, 128}, 127, 1}, Case{{0, 0, 0}, -1, 0},
          Case{{255, 255, 255}, -1, 0}, Case{{9, 200, 9}, most, 1}, Case{{9, 200, 9}, -most - 1, 0}})
        EXPECT_EQ(mrColourUtils::achromatic(colour, tolerance), achromatic)
            << colour.red() << " with " << tolerance;
}
