#include "dgkCurve3.h"

#include "mrTest.h"

namespace {

dgkBezCurve3 dome()
{
    return {3, {{0, 0, 0}, {57, 0, 0}, {144, 0, -31}, {148, 0, -54}}};
}

} // namespace

TEST(DgkBezCurve3, FollowsItsControlPoints)
{
    dgkBezCurve3 const curve = dome();
    giPoint3 const expected[] = {
        {0, 0, 0}, {46.6094, 0, -5.2031}, {93.875, 0, -18.375}, {131.2031, 0, -35.8594}, {148, 0, -54}};
    for (int i = 0; i < 5; ++i) {
        giPoint3 const point = curve.point({i / 4.0, dgkParamDeltaAfter});
        EXPECT_NEAR(point.x, expected[i].x, 5e-5) << i;
        EXPECT_EQ(point.y, 0.0) << i;
        EXPECT_NEAR(point.z, expected[i].z, 5e-5) << i;
    }
    EXPECT_EQ(curve.start_parameter(), 0.0);
    EXPECT_EQ(curve.end_parameter(), 1.0);
}

TEST(DgkBezCurve3, KnowsItsDerivatives)
{
    dgkBezCurve3 const curve = dome();
    giVector3 normal = curve.derivative({1.0, dgkParamDeltaBefore}, 1).cross({0, 1, 0});
    ASSERT_TRUE(normal.unitize());
    EXPECT_NEAR(normal.x, 0.9852, 5e-5);
    EXPECT_NEAR(normal.z, 0.1713, 5e-5);
    normal = curve.derivative({0.0, dgkParamDeltaAfter}, 1).cross({0, 1, 0});
    ASSERT_TRUE(normal.unitize());
    EXPECT_EQ(normal.x, 0.0);
    EXPECT_EQ(normal.z, 1.0);

    // x is 171 t + 90 t² - 113 t³.
    EXPECT_NEAR(curve.derivative({0.5, dgkParamDeltaAfter}, 2).x, 180.0 - 6.0 * 113.0 * 0.5, 1e-9);
    EXPECT_NEAR(curve.derivative({0.5, dgkParamDeltaAfter}, 3).x, -6.0 * 113.0, 1e-9);
    EXPECT_EQ(curve.derivative({0.5, dgkParamDeltaAfter}, 4).length(), 0.0);
}

TEST(DgkBezCurve3, MakesDoWithTheWrongNumberOfPoints)
{
    EXPECT_EQ(dgkBezCurve3(1, {{2, 4, 6}}).point({0.5, dgkParamDeltaAfter}), (giPoint3{1, 2, 3}));
    EXPECT_EQ(dgkBezCurve3(-3, {}).point({0.5, dgkParamDeltaAfter}), giPoint3());
    EXPECT_EQ(dgkBezCurve3(1, {{0, 0, 0}, {2, 2, 2}, {9, 9, 9}}).point({1.0, dgkParamDeltaAfter}),
              (giPoint3{2, 2, 2}));
}
