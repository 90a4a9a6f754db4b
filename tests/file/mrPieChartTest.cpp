#include "mrPieChart.h"

#include "dgkCurve3.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <cmath>
#include <numbers>

using testing::Each;
using testing::ElementsAre;

namespace {

constexpr double tolerance = 5e-5;

void expect_near(giPoint3 const& point, giPoint3 const& expected)
{
    EXPECT_NEAR(point.x, expected.x, tolerance);
    EXPECT_NEAR(point.y, expected.y, tolerance);
    EXPECT_NEAR(point.z, expected.z, tolerance);
}

/// In degrees counter-clockwise from +x, 0 to under 360.
double angle(giPoint3 const& point)
{
    double const degrees = std::atan2(point.y, point.x) * 180.0 / std::numbers::pi;
    return degrees < -tolerance ? degrees + 360.0 : degrees;
}

/// The blocks of a list, for looking at one by one.
std::vector<giTriBlock*> all(giTriBlockcoDListPtrcoPtrcoDList const& blocks)
{
    return {blocks.begin(), blocks.end()};
}

/// A straight profile that remembers where it was asked for points.
class RecordingLine : public dgkCurve3
{
public:
    RecordingLine(double start, double end) : m_start(start), m_end(end) {}
    double start_parameter() const override { return m_start; }
    double end_parameter() const override { return m_end; }
    giPoint3 point(dgkT const& at) const override
    {
        asked.push_back(at.t);
        deltas.push_back(at.delta);
        return {at.t, 0.0, 0.0};
    }
    giVector3 derivative(dgkT const&, int order) const override
    {
        return order == 1 ? giVector3(2.0, 0.0, 0.0) : giVector3(0.0, 0.0, 0.0);
    }

    mutable std::vector<double> asked;
    mutable std::vector<int> deltas;

private:
    double m_start;
    double m_end;
};

} // namespace

TEST(mrPieChart, DefaultDomeHasTheNodesNormalsAndCoordinatesOfItsProfile)
{
    mrPieChart const chart;
    giTriBlock const& block = *all(chart.blocks(1)).front();
    ASSERT_EQ(block.nodes().size(), 300u);
    ASSERT_EQ(block.normals().size(), 300u);
    ASSERT_EQ(block.tus()->size(), 300u);
    ASSERT_EQ(block.triangles().size(), 210u);

    giPoint3 const profile[] = {
        {0, 0, 0}, {46.6094, 0, -5.2031}, {93.875, 0, -18.375}, {131.2031, 0, -35.8594}, {148, 0, -54}};
    for (std::size_t k = 0; k < 5; ++k) {
        expect_near(block.nodes()[k], profile[k]);
        EXPECT_NEAR(angle(block.nodes()[5 + k]), k == 0 ? 0.0 : 12.0, tolerance);
    }
    expect_near({block.normals()[0].x, block.normals()[0].y, block.normals()[0].z}, {0, 0, 1});
    expect_near({block.normals()[4].x, block.normals()[4].y, block.normals()[4].z}, {0.9852, 0, 0.1713});
    EXPECT_NEAR((*block.tus())[0].x, 0.5, tolerance);
    EXPECT_NEAR((*block.tus())[0].y, 0.5, tolerance);
    EXPECT_NEAR((*block.tus())[4].x, 1.0, tolerance);
    EXPECT_NEAR((*block.tus())[4].y, 0.5, tolerance);

    giTriArr const first(block.triangles().begin(), block.triangles().begin() + 7);
    EXPECT_THAT(first, ElementsAre(giTri{0, 1, 6}, giTri{6, 1, 2}, giTri{2, 7, 6}, giTri{7, 2, 3},
                                   giTri{3, 8, 7}, giTri{8, 3, 4}, giTri{4, 9, 8}));
}

TEST(mrPieChart, SlicesFollowEachOtherCounterClockwiseAndCloseTheCircle)
{
    mrPieChart const chart;
    for (int n : {2, 4, 7, 30}) {
        std::size_t const segments = static_cast<std::size_t>(30 / n);
        std::vector<giTriBlock*> const blocks = all(chart.blocks(n));
        ASSERT_EQ(blocks.size(), static_cast<std::size_t>(n));
        for (std::size_t i = 0; i < blocks.size(); ++i) {
            giBoxArrPoint3 const& nodes = blocks[i]->nodes();
            ASSERT_EQ(nodes.size(), segments * 10);
            double const slice = 360.0 / n;
            EXPECT_NEAR(angle(nodes[4]), slice * static_cast<double>(i), tolerance) << n;
            EXPECT_NEAR(std::fmod(angle(nodes[nodes.size() - 1]) + 360.0, 360.0),
                        std::fmod(slice * static_cast<double>(i + 1), 360.0), tolerance)
                << n;
            for (giTri const& t : blocks[i]->triangles()) {
                giPoint3 const& a = nodes[static_cast<std::size_t>(t.a)];
                giPoint3 const& b = nodes[static_cast<std::size_t>(t.b)];
                giPoint3 const& c = nodes[static_cast<std::size_t>(t.c)];
                ASSERT_GT((b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x), 0.0);
            }
        }
    }
}

TEST(mrPieChart, KeepsTheBlocksOfTheLastCount)
{
    mrPieChart const chart;
    giTriBlockcoDListPtrcoPtrcoDList const& list = chart.blocks(3);
    std::vector<giTriBlock*> const three = all(list);
    EXPECT_EQ(&chart.blocks(3), &list);
    EXPECT_EQ(all(list), three);
    EXPECT_EQ(all(chart.blocks(2)).size(), 2u);
    EXPECT_EQ(all(list).size(), 2u);
}

TEST(mrPieChart, CountsThatMakeNoSlices)
{
    mrPieChart const chart;
    for (giTriBlock const* block : all(chart.blocks(31)))
        EXPECT_EQ(block->nodes().size(), 0u);
    EXPECT_EQ(chart.blocks(31).size(), 31u);
    for (int n : {0, 0, -3}) {
        EXPECT_EQ(chart.blocks(n).size(), 0u);
        EXPECT_THAT(reports(), ElementsAre("source/file/mrPieChart.cpp: Args"));
    }
}

TEST(mrPieChart, ReportsNumbersBelowOneAndMakesWhatItCan)
{
    RecordingLine line(0.0, 1.0);
    mrPieChart const neither(&line, 0, -1);
    EXPECT_THAT(reports(),
                ElementsAre("source/file/mrPieChart.cpp: Args", "source/file/mrPieChart.cpp: Args"));
    EXPECT_EQ(neither.blocks(2).size(), 2u);
    mrPieChart const negative(&line, -8, 5);
    EXPECT_EQ(reports().size(), 1u);
    EXPECT_EQ(all(negative.blocks(2)).front()->nodes().size(), 0u);
    mrPieChart const without_points(&line, 8, 0);
    EXPECT_EQ(reports().size(), 1u);
    EXPECT_EQ(all(without_points.blocks(2)).front()->nodes().size(), 0u);
    mrPieChart const without_profile(nullptr, 8, 5);
    EXPECT_EQ(all(without_profile.blocks(2)).front()->nodes().size(), 0u);

    mrPieChart const one_point(&line, 8, 1);
    giTriBlock const& block = *all(one_point.blocks(2)).front();
    EXPECT_EQ(block.nodes().size(), 8u);
    EXPECT_TRUE(block.triangles().empty());
    for (giPoint2 const& tu : *block.tus())
        EXPECT_TRUE(std::isfinite(tu.x) && std::isfinite(tu.y));
}

TEST(mrPieChart, SamplesTheProfileFromParameterZero)
{
    RecordingLine line(0.0, 2.0);
    mrPieChart(&line, 1, 5).blocks(1);
    EXPECT_THAT(line.asked, ElementsAre(0.0, 0.5, 1.0, 1.5, 2.0));
    EXPECT_THAT(line.deltas, Each(1));

    RecordingLine later(2.0, 3.0);
    mrPieChart const off_axis(&later, 1, 2);
    giTriBlock const& block = *all(off_axis.blocks(1)).front();
    EXPECT_THAT(later.asked, ElementsAre(2.0, 2.0));
    EXPECT_THAT(later.deltas, Each(0));
    EXPECT_THAT(block.triangles(), ElementsAre(giTri{0, 1, 3}));
}
