#include "giVector3.h"

#include "mrTest.h"

#include <cmath>

TEST(GiVector3, IsMadeUnitWhereItHasALength)
{
    for (double const length : {1e-320, 1e-200, 5.0, 1e200}) {
        giVector3 vector(0.0, 0.6 * length, -0.8 * length);
        EXPECT_EQ(vector.unitize(), 1) << length;
        EXPECT_NEAR(vector.y, 0.6, 1e-3) << length;
        EXPECT_NEAR(vector.z, -0.8, 1e-3) << length;
    }
    for (double const wrong : {0.0, double{NAN}, double{INFINITY}}) {
        giVector3 vector(0.0, wrong, 0.0);
        EXPECT_EQ(vector.unitize(), 0) << wrong;
        EXPECT_TRUE(vector.x == 0.0 && (vector.y == wrong || std::isnan(wrong)));
    }
}

TEST(GiVector3, IsParallelWithinTheTolerance)
{
    auto const at_angle = [](double degrees, double length) {
        giAngle const angle(degrees, giAngleUnit::degrees);
        return giVector3(angle.cos(), angle.sin(), 0.0) * length;
    };
    giAngle const tolerance(0.01, giAngleUnit::degrees);
    giVector3 const x = at_angle(0.0, 1.0);
    for (giVector3 const& near : {x, at_angle(0.0099, 1e-9), at_angle(-0.0099, 1e9)})
        EXPECT_TRUE(x.parallel(near, tolerance)) << near.y;
    for (giVector3 const& far : {at_angle(0.0101, 1.0), at_angle(180.0, 1.0), at_angle(90.0, 1.0),
                                 giVector3(0, 0, 0), giVector3(NAN, 0, 0)})
        EXPECT_FALSE(x.parallel(far, tolerance)) << far.x << " " << far.y;
}
