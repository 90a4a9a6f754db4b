#include "mrPieChart.h"

#include "dgkCurve3.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

using testing::ElementsAre;

namespace {

std::vector<giTriBlock*> all(giTriBlockcoDListPtrcoPtrcoDList const& blocks)
{
    return {blocks.begin(), blocks.end()};
}

/// A line over the parameters 1 to 4 that writes down where it is asked for a point.
struct AskedLine final : dgkCurve3
{
    double start_parameter() const override { return 1.0; }
    double end_parameter() const override { return 4.0; }
    giPoint3 point(dgkT const& at) const override
    {
        asked.emplace_back(at.t, at.delta);
        return {at.t, 0.0, 0.0};
    }
    giVector3 derivative(dgkT const&, int) const override { return {1.0, 0.0, 0.0}; }

    mutable std::vector<std::pair<double, dgkParamDelta>> asked;
};

} // namespace

TEST(mrPieChart, SlicesOfTheDefaultDomeFollowItsProfileRoundTheCircle)
{
    mrPieChart const chart;
    double const profile[][2] = {
        {0, 0}, {46.6094, -5.2031}, {93.875, -18.375}, {131.2031, -35.8594}, {148, -54}};
    for (int n : {1, 7, 30}) {
        std::vector<giTriBlock*> const blocks = all(chart.blocks(n));
        ASSERT_EQ(blocks.size(), static_cast<std::size_t>(n));
        EXPECT_EQ(all(chart.blocks(n)), blocks); // kept
        std::size_t const segments = static_cast<std::size_t>(30 / n);
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            giBoxArrPoint3 const& nodes = blocks[i]->nodes();
            ASSERT_EQ(nodes.size(), segments * 10);
            ASSERT_EQ(blocks[i]->triangles().size(), segments * 7);
            for (std::size_t k = 0; k < 10; ++k) { // along the first left edge and the last right one
                std::size_t const node = k < 5 ? k : nodes.size() - 10 + k;
                double const turn = static_cast<double>(k < 5 ? i : i + 1) / n * 2.0 * std::numbers::pi;
                auto const [r, z] = profile[k % 5];
                EXPECT_NEAR(nodes[node].x, r * std::cos(turn), 1e-4);
                EXPECT_NEAR(nodes[node].y, r * std::sin(turn), 1e-4);
                EXPECT_NEAR(nodes[node].z, z, 1e-4);
                EXPECT_NEAR((*blocks[i]->tus())[node].x, 0.5 + r * std::cos(turn) / 296, 1e-6);
                EXPECT_NEAR((*blocks[i]->tus())[node].y, 0.5 + r * std::sin(turn) / 296, 1e-6);
            }
        }
    }
    giTriBlock const& slice = *all(chart.blocks(30)).front();
    EXPECT_NEAR(slice.normals()[4].z, 0.1713, 1e-4);
    EXPECT_THAT(slice.triangles(), ElementsAre(giTri{0, 1, 6}, giTri{6, 1, 2}, giTri{2, 7, 6}, giTri{7, 2, 3},
                                               giTri{3, 8, 7}, giTri{8, 3, 4}, giTri{4, 9, 8}));
}

TEST(mrPieChart, MakesFewerSegmentsThanFacetsOrNone)
{
    std::string const args = "source/file/mrPieChart.cpp: Args";
    mrPieChart const chart;
    EXPECT_EQ(all(chart.blocks(31)).back()->nodes().size(), 0u);
    EXPECT_EQ(chart.blocks(0).size() + chart.blocks(-3).size(), 0u);
    EXPECT_THAT(reports(), ElementsAre(args, args));

    dgkBezCurve3 line(1, {{0, 0, 0}, {2, 0, 0}});
    mrPieChart const neither(&line, 0, -1), without_profile(nullptr, 8, 5);
    EXPECT_THAT(reports(), ElementsAre(args, args));
    for (mrPieChart const* each : {&neither, &without_profile})
        EXPECT_EQ(all(each->blocks(2)).front()->nodes().size(), 0u);
    mrPieChart const one_point(&line, 1, 1);
    giTriBlock const& block = *all(one_point.blocks(1)).front();
    EXPECT_EQ(block.nodes().size(), 2u);
    EXPECT_TRUE(std::isfinite((*block.tus())[0].x));
}

TEST(mrPieChart, SamplesAProfileFromParameter0OnWithinItsRange)
{
    AskedLine two, four;
    mrPieChart(&two, 1, 2).blocks(1);
    EXPECT_THAT(two.asked, ElementsAre(std::pair(1.0, dgkParamDelta(0)), std::pair(3.0, dgkParamDelta(0))));
    mrPieChart(&four, 1, 4).blocks(1);
    EXPECT_THAT(four.asked, ElementsAre(std::pair(1.0, dgkParamDelta(1)), std::pair(1.0, dgkParamDelta(1)),
                                        std::pair(2.0, dgkParamDelta(1)), std::pair(3.0, dgkParamDelta(1))));
}
