#include "giBox.h"

#include "mrTest.h"

#include <cmath>

TEST(giBox, HoldsThePointsThatAreNumbers)
{
    giBox3 box;
    giBox2 flat;
    for (double const wrong : {double{NAN}, double{INFINITY}, -double{INFINITY}}) {
        box.extend(giPoint3{wrong, 0, 0});
        box.extend(giPoint3{0, wrong, 0});
        box.extend(giPoint3{0, 0, wrong});
        flat.extend(giPoint2{wrong, 0});
        flat.extend(giPoint2{0, wrong});
    }
    EXPECT_TRUE(box.empty());
    EXPECT_TRUE(flat.empty());

    box.extend(giPoint3{1, -2, 3});
    box.extend(giPoint3{-1, 5, NAN});
    box.extend(giPoint3{0, 2, -4});
    EXPECT_EQ(box, giBox3({0, -2, -4}, {1, 2, 3}));
    flat.extend(giPoint2{1, 2});
    flat.extend(giPoint2{0, 5});
    EXPECT_EQ(flat, giBox2({0, 2}, {1, 5}));
}
