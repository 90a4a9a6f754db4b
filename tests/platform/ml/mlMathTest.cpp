#include "mlMath.h"

#include "mrTest.h"

#include <cmath>

TEST(MlMath, IncludesTheBoundsAndNoNan)
{
    EXPECT_EQ(mlMath::in_range(0.0, 0.0, 1.0), 1);
    EXPECT_EQ(mlMath::in_range(1.0, 0.0, 1.0), 1);
    EXPECT_EQ(mlMath::in_range(std::nextafter(1.0, 2.0), 0.0, 1.0), 0);
    EXPECT_EQ(mlMath::in_range(-1e-300, 0.0, 1.0), 0);
    EXPECT_EQ(mlMath::in_range(NAN, 0.0, 1.0), 0);
    EXPECT_EQ(mlMath::in_range(INFINITY, 0.0, 1.0), 0);
}

TEST(MlMath, ClipsToTheNearerBound)
{
    EXPECT_EQ(mlMath::clip_to_range(0.5, 0.0, 1.0), 0.5);
    EXPECT_EQ(mlMath::clip_to_range(-0.5, 0.0, 1.0), 0.0);
    EXPECT_EQ(mlMath::clip_to_range(INFINITY, 0.0, 1.0), 1.0);
    EXPECT_EQ(mlMath::clip_to_range(NAN, 0.25, 1.0), 0.25);
}
