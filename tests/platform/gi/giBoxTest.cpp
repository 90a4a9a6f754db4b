#include "giBox.h"

#include "giTriBlock.h"
#include "mrTest.h"

#include <cmath>

TEST(GiBox, HoldsThePointsThatAreNumbers)
{
    giBox3 box;
    for (double const wrong : {double{NAN}, double{INFINITY}, -double{INFINITY}}) {
        box.extend(giPoint3{wrong, 0, 0});
        box.extend(giPoint3{0, wrong, 0});
        box.extend(giPoint3{0, 0, wrong});
    }
    EXPECT_TRUE(box.empty());
    box.extend(giPoint3{1, -2, 3});
    EXPECT_EQ(box, giBox3({1, -2, 3}, {1, -2, 3}));
    box.extend(giPoint3{-1, 5, NAN});
    box.extend(giPoint3{0, 2, -4});
    EXPECT_EQ(box, giBox3({0, -2, -4}, {1, 2, 3}));

    giBox2 flat;
    flat.extend(giPoint2{NAN, 0});
    EXPECT_TRUE(flat.empty());
    flat.extend(giPoint2{1, 2});
    flat.extend(giPoint2{3, -INFINITY});
    flat.extend(giPoint2{0, 5});
    EXPECT_EQ(flat, giBox2({0, 2}, {1, 5}));
}

TEST(GiBox, JoinsBoxes)
{
    giBox3 box;
    box.extend(giBox3());
    EXPECT_TRUE(box.empty());
    box.extend(giBox3({0, 0, 0}, {1, 1, 1}));
    box.extend(giBox3());
    box.extend(giBox3({-1, 0.5, 0}, {0, 2, 0.5}));
    EXPECT_EQ(box, giBox3({-1, 0, 0}, {1, 2, 1}));
}

TEST(GiBoxArr, KnowsItsBoxOnceComputed)
{
    giBoxArrPoint3 points;
    points.append({1, 2, 3});
    EXPECT_TRUE(points.box().empty());
    points.compute_box();
    EXPECT_EQ(points.box(), giBox3({1, 2, 3}, {1, 2, 3}));
    points.append({0, 0, 0});
    points.compute_box();
    EXPECT_EQ(points.box(), giBox3({0, 0, 0}, {1, 2, 3}));
}
