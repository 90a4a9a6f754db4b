#include "picture.h"

#include "gsTriUtils.h"

#include <limits>

namespace {

using dgOffscreenMeshTest = Pictures;

gsColour const colour(1, 0, 0);
double const not_a_number = std::numeric_limits<double>::quiet_NaN();
double const infinite = std::numeric_limits<double>::infinity();

} // namespace

TEST_F(dgOffscreenMeshTest, LeavesOutTheTrianglesThatDoNotHoldTogether)
{
    giTriBlock const good = square();
    Image const expected = draw_blocks(colour, {&good});

    giTriBlock block = square();
    gsTriUtils::check_out_nodes(block).append({0.5, not_a_number, 0.5});
    gsTriUtils::check_out_nodes(block).append({infinite, 0.5, 0.5});
    gsTriUtils::check_out_normals(block).resize(6, {0, 0, 1});
    giTriArr& triangles = gsTriUtils::check_out_triangles(block);
    for (int const bad : {4, 5, 6, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()})
        for (giTri const& triangle : {giTri{bad, 1, 2}, giTri{0, bad, 2}, giTri{0, 1, bad}})
            triangles.insert(triangles.begin(), triangle);
    EXPECT_TRUE(draw_blocks(colour, {&block})->equal(expected.get()));
}

TEST_F(dgOffscreenMeshTest, TakesTheFacesNormalWhereTheBlockHasNone)
{
    giTriBlock const upright = square();
    auto const leaning = [&](giNormArr const& normals) {
        giTriBlock block = square();
        gsTriUtils::check_out_nodes(block) = giBoxArrPoint3();
        for (giPoint3 const& node : upright.nodes())
            gsTriUtils::check_out_nodes(block).append({node.x, node.y, 0.5 * node.x - 0.3 * node.y});
        gsTriUtils::check_out_normals(block) = normals;
        return pixel(*draw_blocks(colour, {&block}), 50, 50);
    };
    giVector3 const normal(-0.5, 0.3, 1.0);
    auto const expected = leaning(giNormArr(4, normal));
    giNormArr const cases[] = {
        {},
        {{1, 0, 0}},
        giNormArr(5, {1, 0, 0}),
        giNormArr(4, {0, 0, 0}),
        giNormArr(4, {0, not_a_number, 0}),
        giNormArr(4, {infinite, 0, 0}),
        giNormArr(4, giVector3()),
        giNormArr(4, normal * 1e-300),
        giNormArr(4, normal * 1e300),
    };
    for (giNormArr const& normals : cases)
        EXPECT_TRUE(close(leaning(normals), expected, 1)) << "case " << &normals - cases;
}

TEST_F(dgOffscreenMeshTest, DrawsWithoutTextureWhatHasNoCoordinates)
{
    giTriBlock const good = square();
    Image const expected = draw_blocks(colour, {&good});
    auto* const black = new dgDuctImage("", 4, 4);
    black->reference();
    auto const textured = [&](giTriBlock const& block) {
        return draw([&](dgStructure& scene) {
            scene.append(new dgTextureFlag(1, 0));
            scene.append(new dgTexture(black, dgTextureImageAsIs, dgTextureFilterLinear, dgTextureWrapRepeat,
                                       dgTextureModulate, 0));
            append(scene, block, colour);
        });
    };
    giTriBlock none = square();
    gsTriUtils::check_out_tus(none) = giBoxArrPoint2();
    giTriBlock few = square();
    gsTriUtils::check_out_tus(few).append({0, 0});
    EXPECT_TRUE(textured(none)->equal(expected.get()));
    EXPECT_TRUE(textured(few)->equal(expected.get()));
    EXPECT_FALSE(textured(good)->equal(expected.get()));

    // Coordinates that are no number or far away are drawn somehow.
    giTriBlock odd = square();
    gsTriUtils::check_out_tus(odd) = giBoxArrPoint2();
    for (double const u : {not_a_number, infinite, 1e300, -1e300})
        gsTriUtils::check_out_tus(odd).append({u, u});
    EXPECT_TRUE(textured(odd)->equal(textured(good).get()));
    black->unreference();
}

TEST_F(dgOffscreenMeshTest, EmptyBlocksLeaveTheBackground)
{
    giTriBlock const empty;
    giTriBlock no_triangles = square();
    gsTriUtils::check_out_triangles(no_triangles).clear();
    giTriBlock no_nodes;
    gsTriUtils::check_out_triangles(no_nodes).push_back({0, 1, 2});
    Image const image = draw_blocks(colour, {&empty, &no_triangles, &no_nodes});
    ASSERT_TRUE(image);
    for (int at = 0; at < side; ++at)
        EXPECT_EQ(pixel(*image, at, at), background_pixel);
}

TEST_F(dgOffscreenMeshTest, DrawsAnySizeAlike)
{
    giTriBlock const good = square();
    Image const expected = draw_blocks(colour, {&good});
    for (double const size : {1e-300, 1e-30, 1e30, 1e300}) {
        giTriBlock block = square();
        gsTriUtils::check_out_nodes(block) = giBoxArrPoint3();
        for (giPoint3 const& node : good.nodes())
            gsTriUtils::check_out_nodes(block).append({(node.x + 5) * size, (node.y - 7) * size, size});
        Image const image = draw_blocks(colour, {&block});
        EXPECT_TRUE(close(pixel(*image, 10, 10), pixel(*expected, 10, 10), 1)) << size;
        EXPECT_TRUE(close(pixel(*image, 90, 90), pixel(*expected, 90, 90), 1)) << size;
        EXPECT_EQ(pixel(*image, 2, 50), background_pixel) << size;
    }
}

TEST_F(dgOffscreenMeshTest, NearerTrianglesHideFartherOnes)
{
    giTriBlock const near = square(0.0, 1.0);
    giTriBlock const far = square(0.0, 0.0);
    for (bool const near_first : {true, false}) {
        Image const image = draw([&](dgStructure& scene) {
            scene.append(new dgReflectionModel(dgReflectionNone));
            append(scene, near_first ? near : far, near_first ? colour : gsColour(0, 1, 0));
            append(scene, near_first ? far : near, near_first ? gsColour(0, 1, 0) : colour);
        });
        EXPECT_EQ(pixel(*image, 50, 50), (std::array{255, 0, 0, 255}));
    }
}
