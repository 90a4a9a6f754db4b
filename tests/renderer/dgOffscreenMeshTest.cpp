#include "picture.h"

#include "gsTriUtils.h"

#include <climits>
#include <cmath>
#include <utility>

using dgOffscreenMeshTest = Pictures;

TEST_F(dgOffscreenMeshTest, LeavesOutTheTrianglesThatDoNotHoldTogether)
{
    auto const half = [](giTriBlock block, std::initializer_list<int> bad_nodes) {
        giTriArr& triangles = gsTriUtils::check_out_triangles(block);
        triangles = {{0, 1, 3}};
        for (int const bad : bad_nodes)
            triangles.insert(triangles.begin(), {{bad, 1, 2}, {0, bad, 2}, {0, 2, bad}});
        return draw({{.block = &block}});
    };
    Image const expected = half(block_of({}), {});
    EXPECT_TRUE(half(block_of({}), {4, 5, -1, INT_MAX, INT_MIN})->equal(expected.get()));
    giTriBlock odd_nodes = block_of({});
    gsTriUtils::check_out_nodes(odd_nodes).append({0.5, NAN, 0.5});
    gsTriUtils::check_out_nodes(odd_nodes).append({HUGE_VAL, 0.5, 0.5});
    EXPECT_TRUE(half(std::move(odd_nodes), {4, 5})->equal(expected.get()));
}

TEST_F(dgOffscreenMeshTest, TakesTheFacesNormalWhereTheBlockHasNone)
{
    auto const leaning = [](giNormArr const& normals) {
        return middle(
            {.right = {1, 0, 0.5}, .up = {0, 1, -0.3}, .normals = normals, .colour = red, .lit = true});
    };
    giVector3 const normal(-0.5, 0.3, 1.0);
    Pixel const expected = leaning(giNormArr(4, normal));
    giVector3 const odd[] = {{0, 0, 0}, {0, NAN, 0}, {HUGE_VAL, 0, 0}, normal * 1e-300, normal * 1e300};
    for (giVector3 const& each : odd)
        EXPECT_THAT(leaning(giNormArr(4, each)), near(expected, 1)) << each.x << ' ' << each.y;
    for (std::size_t const count : {0U, 1U, 5U})
        EXPECT_THAT(leaning(giNormArr(count, {1, 0, 0})), near(expected, 1)) << count;
}

TEST_F(dgOffscreenMeshTest, DrawsAnySizeAlikeAndTheNearerInFront)
{
    for (double const size : {1e-300, 1e-30, 1e30, 1e300}) {
        Image const image =
            draw({{.corner = {5 * size, -7 * size, size}, .right = {size, 0, 0}, .up = {0, size, 0}}});
        EXPECT_EQ(pixel(*image, 5, 94), white) << size;
        EXPECT_EQ(pixel(*image, 2, 50), background) << size;
    }
    Square const near{.corner = {0, 0, 1}, .colour = red};
    EXPECT_EQ(pixel(*draw({near, Square()}), 50, 50), red);
    EXPECT_EQ(pixel(*draw({Square(), near}), 50, 50), red);
}

TEST_F(dgOffscreenMeshTest, HasNoHolesWhereTrianglesAreSmallerThanPixels)
{
    constexpr int cells = 300; // in each direction
    giTriBlock fine;
    for (int y = 0; y <= cells; ++y)
        for (int x = 0; x <= cells; ++x) {
            bool const inside = x > 0 && y > 0 && x < cells && y < cells;
            // So that the triangles have many shapes, and some are turned over.
            double const shift = inside ? (x * 7 + y * 5) % 11 / 13.0 : 0.0;
            gsTriUtils::check_out_nodes(fine).append({(x + shift) / cells, (y - shift) / cells, 0.0});
        }
    for (int y = 0; y < cells; ++y)
        for (int x = 0; x < cells; ++x) {
            int const at = y * (cells + 1) + x;
            int const above = at + cells + 1;
            gsTriUtils::check_out_triangles(fine).insert(gsTriUtils::check_out_triangles(fine).end(),
                                                         {{at, at + 1, above + 1}, {at, above + 1, above}});
        }
    EXPECT_TRUE(draw({{.block = &fine}})->equal(draw({{}}).get()));
}
