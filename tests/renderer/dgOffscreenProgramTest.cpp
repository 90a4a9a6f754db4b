#include "picture.h"

#include <set>

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

TEST_F(dgOffscreenProgramTest, LightComesFromTheUpperLeftAndFromWhatGlows)
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

    Pixel const dark{0, 60, 0, 255};
    EXPECT_EQ(middle({.colour = dark, .emission = red}), dark);
    EXPECT_EQ(middle({.colour = black, .lit = true, .specular = 0.0, .emission = dark}), dark);
}

TEST_F(dgOffscreenProgramTest, FlatShadingAndSmoothEdges)
{
    auto const colours = [](Square const& square) {
        Image const image = draw({square});
        std::set<Pixel> found;
        for (int at = 0; at < side * side; ++at)
            found.insert(pixel(*image, at / side, at % side));
        return found.size();
    };
    Square round{.normals = {{-1, -1, 1}, {1, -1, 1}, {-1, 1, 1}, {1, 1, 1}}, .colour = red, .lit = true};
    EXPECT_GT(colours(round), 12U);
    round.flat = true;
    EXPECT_EQ(colours(round), 2U);
    // Mixtures along the edge.
    EXPECT_GE(colours({.right = {1, 0.1, 0}, .up = {-0.1, 1, 0}}), 4U);
}
