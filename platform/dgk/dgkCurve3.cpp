#include "dgkCurve3.h"

#include <algorithm>

namespace {

giPoint3 between(giPoint3 const& a, giPoint3 const& b, double t)
{
    return {a.x + (b.x - a.x) * t, a.y + (b.y - a.y) * t, a.z + (b.z - a.z) * t};
}

// De Casteljau: replaces the points, round by round, by those between neighbours.
giPoint3 evaluate(std::vector<giPoint3> points, double t)
{
    for (std::size_t count = points.size(); count > 1; --count)
        for (std::size_t i = 0; i + 1 < count; ++i)
            points[i] = between(points[i], points[i + 1], t);
    return points.front();
}

} // namespace

dgkCurve3::~dgkCurve3() = default;

dgkBezCurve3::dgkBezCurve3(int degree, std::vector<giPoint3> control_points)
    : m_points(std::move(control_points))
{
    m_points.resize(static_cast<std::size_t>(std::max(degree, 1)) + 1);
}

double dgkBezCurve3::start_parameter() const
{
    return 0.0;
}

double dgkBezCurve3::end_parameter() const
{
    return 1.0;
}

giPoint3 dgkBezCurve3::point(dgkT const& at) const
{
    return evaluate(m_points, at.t);
}

giVector3 dgkBezCurve3::derivative(dgkT const& at, int order) const
{
    // The derivative of a Bézier curve is one of a degree less over the differences, times the degree.
    std::vector<giPoint3> points = m_points;
    for (int round = 0; round < order; ++round) {
        double const degree = static_cast<double>(points.size()) - 1.0;
        if (degree < 1.0)
            return {0.0, 0.0, 0.0};
        for (std::size_t i = 0; i + 1 < points.size(); ++i)
            points[i] = {degree * (points[i + 1].x - points[i].x), degree * (points[i + 1].y - points[i].y),
                         degree * (points[i + 1].z - points[i].z)};
        points.pop_back();
    }
    giPoint3 const value = evaluate(std::move(points), at.t);
    return {value.x, value.y, value.z};
}
