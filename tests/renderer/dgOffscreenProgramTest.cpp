#include "picture.h"

#include "gsTriUtils.h"

#include <algorithm>
#include <set>
#include <utility>

namespace {

using dgOffscreenProgramTest = Pictures;

gsColour const red(200 / 255.0, 30 / 255.0, 30 / 255.0);
gsColour const white(1, 1, 1);
gsColour const black(0, 0, 0);

} // namespace

TEST_F(dgOffscreenProgramTest, FacingSurfaceShowsItsColour)
{
    giTriBlock const block = square();
    Image const image = draw_blocks(red, {&block});
    EXPECT_TRUE(close(pixel(*image, 50, 50), {200, 30, 30, 255}, 8));
    EXPECT_EQ(pixel(*image, 1, 1), background_pixel);
    EXPECT_EQ(pixel(*image, 98, 50), background_pixel);
}

TEST_F(dgOffscreenProgramTest, LightComesFromTheUpperLeft)
{
    giTriBlock const block = ball(64);
    auto const grey_ball = [&](double specular) {
        return draw([&](dgStructure& scene) {
            scene.append(new dgSurfColour(gsColour(180 / 255.0, 180 / 255.0, 180 / 255.0)));
            scene.append(new dgReflectionAttributes(0.1, 0.8, 0.0, specular, 100.0, white, black));
            scene.append(new dgTriangleBlock(block, 0));
        });
    };
    Image const image = grey_ball(0.0);
    int darkest = 255;
    int brightest = 0;
    std::pair<int, int> brightest_at;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x) {
            auto const [red_part, green, blue, alpha] = pixel(*image, x, y);
            if (red_part != blue)
                continue; // background, or an edge mixed with it
            darkest = std::min(darkest, red_part);
            if (red_part > brightest)
                brightest_at = {x, y};
            brightest = std::max(brightest, red_part);
        }
    EXPECT_NEAR(darkest, 94, 2);
    EXPECT_NEAR(brightest, 252, 1);
    EXPECT_NEAR(brightest_at.first, 50 - 0.35 * 46, 5);
    EXPECT_NEAR(brightest_at.second, 50 - 0.35 * 46, 5);

    // The highlight is half-way to the viewer, and sharp.
    Image const shiny = grey_ball(0.5);
    EXPECT_EQ(pixel(*shiny, 42, 42)[0], 255);
    EXPECT_EQ(pixel(*shiny, 75, 75), pixel(*image, 75, 75));
}

TEST_F(dgOffscreenProgramTest, BothSidesShowUnlessBackFacesAreCulled)
{
    giTriBlock block = square();
    Image const front = draw_blocks(red, {&block});
    gsTriUtils::check_out_triangles(block) = {{0, 3, 1}, {0, 2, 3}};
    gsTriUtils::check_out_normals(block).assign(4, {0, 0, -1});
    EXPECT_TRUE(draw_blocks(red, {&block})->equal(front.get()));

    Image const culled = draw([&](dgStructure& scene) {
        scene.append(new dgBackFaceFlag(1));
        append(scene, block, red);
    });
    EXPECT_EQ(pixel(*culled, 50, 50), background_pixel);
}

TEST_F(dgOffscreenProgramTest, FlatShadingTakesOneNormalATriangle)
{
    giTriBlock const block = ball(3);
    auto const shades = [&](dgShadingMethodType method) {
        Image const image = draw([&](dgStructure& scene) {
            scene.append(new dgShadingMethod(method));
            append(scene, block, gsColour(1, 0, 0));
        });
        std::set<int> found;
        for (int x = 30; x < 70; ++x)
            found.insert(pixel(*image, x, 40)[0]);
        return found.size();
    };
    EXPECT_LE(shades(dgShadingFlat), 8U);
    EXPECT_GT(shades(dgShadingSmooth), 12U);
}

TEST_F(dgOffscreenProgramTest, ReflectionModelAndEmission)
{
    giTriBlock const block = square();
    Image const unlit = draw([&](dgStructure& scene) {
        scene.append(new dgReflectionModel(dgReflectionNone));
        append(scene, block, gsColour(100 / 255.0, 0, 0));
    });
    EXPECT_EQ(pixel(*unlit, 50, 50), (std::array{100, 0, 0, 255}));

    Image const glowing = draw([&](dgStructure& scene) {
        scene.append(new dgSurfColour(black));
        scene.append(new dgReflectionAttributes(0.1, 0.5, 0.0, 0.0, 1.0, white, gsColour(0, 60 / 255.0, 0)));
        scene.append(new dgTriangleBlock(block, 0));
    });
    EXPECT_EQ(pixel(*glowing, 50, 50), (std::array{0, 60, 0, 255}));
}

TEST_F(dgOffscreenProgramTest, EdgesAreSmooth)
{
    giTriBlock block;
    for (giPoint3 const& corner : {giPoint3{0, 0, 0}, {1, 0.1, 0}, {0.9, 1.1, 0}, {-0.1, 1, 0}})
        gsTriUtils::check_out_nodes(block).append(corner);
    gsTriUtils::check_out_triangles(block) = {{0, 1, 2}, {0, 2, 3}};
    Image const image = draw_blocks(gsColour(1, 0, 0), {&block});
    std::set<int> blues;
    for (int x = 0; x < side; ++x)
        blues.insert(pixel(*image, x, 10)[2]);
    EXPECT_GE(blues.size(), 4U); // none, all, and shares of the background between
}
