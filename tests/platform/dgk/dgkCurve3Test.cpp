#include "dgkCurve3.h"

#include "mrTest.h"

TEST(DgkBezCurve3, KnowsItsPointsAndDerivatives)
{
    // x is 171 t + 90 t² - 113 t³, z is -93 t² + 39 t³.
    dgkBezCurve3 const curve(3, {{0, 0, 0}, {57, 0, 0}, {144, 0, -31}, {148, 0, -54}});
    for (double const t : {0.0, 0.25, 0.5, 1.0}) {
        dgkT const at{t, dgkParamDeltaAfter};
        EXPECT_NEAR(curve.point(at).x, t * (171 + t * (90 - 113 * t)), 1e-9) << t;
        EXPECT_NEAR(curve.point(at).z, t * t * (39 * t - 93), 1e-9) << t;
        EXPECT_NEAR(curve.derivative(at, 1).x, 171 + t * (180 - 339 * t), 1e-9) << t;
        EXPECT_NEAR(curve.derivative(at, 2).z, 234 * t - 186, 1e-9) << t;
        EXPECT_NEAR(curve.derivative(at, 3).x, -678, 1e-9) << t;
        EXPECT_EQ(curve.derivative(at, 4).length(), 0.0) << t;
    }
}

TEST(DgkBezCurve3, MakesDoWithTheWrongNumberOfPoints)
{
    EXPECT_EQ(dgkBezCurve3(-3, {}).point({0.5, dgkParamDeltaAfter}), giPoint3());
    EXPECT_EQ(dgkBezCurve3(1, {{0, 0, 0}, {2, 2, 2}, {9, 9, 9}}).point({1.0, dgkParamDeltaAfter}),
              (giPoint3{2, 2, 2}));
}
