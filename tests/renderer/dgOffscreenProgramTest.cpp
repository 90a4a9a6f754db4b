#include "picture.h"

using dgOffscreenProgramTest = Pictures;

TEST_F(dgOffscreenProgramTest, BothSidesShowUnlessBackFacesAreCulled)
{
    Square const front{.colour = red, .lit = true};
    Square back{
        .right = {0, 1, 0}, .up = {1, 0, 0}, .normals = giNormArr(4, {0, 0, -1}), .colour = red, .lit = true};
    EXPECT_TRUE(draw({back})->equal(draw({front}).get()));
    back.culled = true;
    EXPECT_EQ(middle(back), background);
}

TEST_F(dgOffscreenProgramTest, LightComesFromTheUpperLeft)
{
    Square grey{.colour = {180, 180, 180, 255}, .lit = true, .specular = 0.0};
    auto const brightness = [&](giVector3 const& normal) {
        grey.normals = giNormArr(4, normal);
        return middle(grey)[0];
    };
    EXPECT_NEAR(brightness({-0.35, 0.35, 0.87}), 193, 1);
    EXPECT_NEAR(brightness({0.7, -0.7, 0.1}), 94, 1);
    // The highlight is half-way to the viewer, and sharp.
    grey.specular = 0.5;
    EXPECT_EQ(brightness({-0.18, 0.18, 0.97}), 255);
    EXPECT_NEAR(brightness({-0.35, 0.35, 0.87}), 193, 30);
}
