#include "mrPieChart.h"

#include "mrGuard.h"

#include "dgkCurve3.h"
#include "mlMath.h"
#include "utAssert.h"
#include "utNeverDestroyed.h"

#include <memory>
#include <vector>

namespace {

dgkCurve3* default_profile()
{
    // A horizontal tangent on the axis makes the top flat.
    static utNeverDestroyed<dgkBezCurve3> curve(
        3,
        std::vector<giPoint3>{{0.0, 0.0, 0.0}, {57.0, 0.0, 0.0}, {144.0, 0.0, -31.0}, {148.0, 0.0, -54.0}});
    return &*curve;
}

/// The nodes along an edge of a segment, with their normals and texture coordinates.
struct Edge
{
    std::vector<giPoint3> points;
    std::vector<giVector3> normals;
    std::vector<giPoint2> tus;
};

std::vector<giPoint3> rotate_profile(std::vector<giPoint3> const& points, giAngle const& angle)
{
    std::vector<giPoint3> rotated;
    for (giPoint3 const& point : points)
        rotated.push_back({point.x * angle.cos(), point.x * angle.sin(), point.z});
    return rotated;
}

std::vector<giVector3> rotate_vectors(std::vector<giVector3> const& vectors, giAngle const& angle)
{
    std::vector<giVector3> rotated;
    for (giVector3 const& vector : vectors)
        rotated.emplace_back(vector.x * angle.cos(), vector.x * angle.sin(), vector.z);
    return rotated;
}

std::vector<giVector3> rotate_normals(std::vector<giVector3> const& normals, giAngle const& angle)
{
    std::vector<giVector3> rotated = rotate_vectors(normals, angle);
    for (giVector3& normal : rotated)
        normal.unitize();
    return rotated;
}

std::vector<giPoint2> planar_tus(double radius, std::vector<giPoint3> const& points)
{
    // A profile that ends on the axis spans no disc to divide by.
    double const diameter = radius == 0.0 ? 1.0 : 2.0 * radius;
    std::vector<giPoint2> tus;
    for (giPoint3 const& point : points)
        tus.push_back({(point.x + radius) / diameter, (point.y + radius) / diameter});
    return tus;
}

Edge rotate(Edge const& profile, giAngle const& angle)
{
    Edge edge;
    edge.points = rotate_profile(profile.points, angle);
    edge.normals = rotate_normals(profile.normals, angle);
    edge.tus = planar_tus(profile.points.back().x, edge.points);
    return edge;
}

/// The profile's points and normals, evenly spread over its parameters, without texture coordinates.
Edge sample(dgkCurve3 const& curve, int points)
{
    double const start = curve.start_parameter();
    double const end = curve.end_parameter();
    double const step = points > 1 ? (end - start) / (points - 1) : 0.0;
    dgkParamDelta const delta = points == 2 ? dgkParamDeltaBefore : dgkParamDeltaAfter;

    Edge profile;
    for (int k = 0; k < points; ++k) {
        // Without the start added: profiles begin at parameter 0.
        dgkT const at{mlMath::clip_to_range(k * step, start, end), delta};
        profile.points.push_back(curve.point(at));
        giVector3 normal = curve.derivative(at, 1).cross({0.0, 1.0, 0.0});
        normal.unitize();
        profile.normals.push_back(normal);
    }
    return profile;
}

void append_edge(Edge const& edge, giBoxArrPoint3& nodes, giNormArr& normals, giBoxArrPoint2& tus)
{
    for (std::size_t k = 0; k < edge.points.size(); ++k) {
        nodes.append(edge.points[k]);
        normals.push_back(edge.normals[k]);
        tus.append(edge.tus[k]);
    }
}

void append_strip(Edge const& left, Edge const& right, giBoxArrPoint3& nodes, giNormArr& normals,
                  giBoxArrPoint2& tus, giTriArr& triangles)
{
    int const points = static_cast<int>(left.points.size());
    int const l = static_cast<int>(nodes.size()); // first node of the left edge
    int const r = l + points;                     // and of the right one
    append_edge(left, nodes, normals, tus);
    append_edge(right, nodes, normals, tus);
    if (points < 2)
        return;

    // Next to the axis the two edges meet in one point, so one triangle is enough there.
    triangles.push_back({l, l + 1, r + 1});
    for (int k = 0; k < points - 2; ++k) {
        triangles.push_back({r + k + 1, l + k + 1, l + k + 2});
        triangles.push_back({l + k + 2, r + k + 2, r + k + 1});
    }
}

} // namespace

mrPieChart::mrPieChart() : m_profile(default_profile())
{
    UT_CHECK_VALID(m_check);
}

mrPieChart::mrPieChart(dgkCurve3* profile, int segments, int profile_points)
    : m_profile(profile), m_segments(segments), m_profile_points(profile_points)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(segments > 0, "Args");
    UT_REQUIRE(profile_points > 0, "Args");
}

mrPieChart::~mrPieChart()
{
    UT_CHECK_VALID(m_check);
    gsTriUtils::delete_and_clear(m_blocks);
}

giTriBlockcoDListPtrcoPtrcoDList const& mrPieChart::blocks(int n) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(n > 0, "Args");
    if (n >= 0 && m_blocks.size() == static_cast<std::size_t>(n))
        return m_blocks;
    gsTriUtils::delete_and_clear(m_blocks);
    if (n <= 0)
        return m_blocks;
    if (!mr_guard(0, [&] { return make_blocks(n); }))
        gsTriUtils::delete_and_clear(m_blocks);
    return m_blocks;
}

int mrPieChart::make_blocks(int n) const
{
    int const segments_per_facet = m_segments / n;
    // The segments close the circle, even when they are fewer than asked for.
    int const made = segments_per_facet * n;
    giAngle const step(made != 0 ? 360.0 / made : 0.0, giAngleUnit::degrees);
    for (int facet = 0; facet < n; ++facet) {
        auto block = std::make_unique<giTriBlock>();
        make_block(*block, facet, segments_per_facet, step);
        gsTriUtils::repage(*block, nullptr, nullptr);
        m_blocks.append(block.get());
        block.release();
    }
    return 1;
}

void mrPieChart::append_seg(dgkCurve3* profile, int points, giAngle const& step, int, int, int seg_index,
                            giBoxArrPoint3& nodes, giNormArr& normals, giBoxArrPoint2& tus,
                            giTriArr& triangles)
{
    if (!profile || points <= 0)
        return;
    Edge const unrotated = sample(*profile, points);
    giAngle const left = step * seg_index;
    giAngle const right = left + step;
    append_strip(rotate(unrotated, left), rotate(unrotated, right), nodes, normals, tus, triangles);
}

void mrPieChart::make_block(giTriBlock& block, int facet, int segments_per_facet, giAngle const& step) const
{
    UT_CHECK_VALID(m_check);
    giBoxArrPoint3& nodes = gsTriUtils::check_out_nodes(block);
    giNormArr& normals = gsTriUtils::check_out_normals(block);
    giBoxArrPoint2& tus = gsTriUtils::check_out_tus(block);
    giTriArr& triangles = gsTriUtils::check_out_triangles(block);
    for (int j = 0; j < segments_per_facet; ++j)
        append_seg(m_profile, m_profile_points, step, segments_per_facet, j, facet * segments_per_facet + j,
                   nodes, normals, tus, triangles);
}
