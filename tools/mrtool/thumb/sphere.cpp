#include "sphere.h"

#include "gsTriUtils.h"

#include <cmath>
#include <numbers>

namespace mrtool {

namespace {

// Fine enough for its outline to be round in a picture of a thousand pixels.
constexpr int segments = 128; // all round
constexpr int rings = 64;     // from pole to pole

/// @param turn  from -1 to 1, the z axis in the middle
/// @param rise  from 0, the lower pole, to 1
void append_node(giTriBlock& block, double turn, double rise)
{
    double const longitude = turn * std::numbers::pi;
    double const latitude = (rise - 0.5) * std::numbers::pi;
    giPoint3 const point{std::sin(longitude) * std::cos(latitude), std::sin(latitude),
                         std::cos(longitude) * std::cos(latitude)};
    gsTriUtils::check_out_nodes(block).append(point);
    gsTriUtils::check_out_normals(block).emplace_back(point.x, point.y, point.z);
    gsTriUtils::check_out_tus(block).append({turn + 0.5, rise});
}

} // namespace

void fill_sphere(giTriBlock& block)
{
    for (int ring = 0; ring <= rings; ++ring)
        for (int segment = 0; segment <= segments; ++segment)
            append_node(block, 2.0 * segment / segments - 1.0, static_cast<double>(ring) / rings);

    giTriArr& triangles = gsTriUtils::check_out_triangles(block);
    for (int ring = 0; ring < rings; ++ring)
        for (int segment = 0; segment < segments; ++segment) {
            int const at = ring * (segments + 1) + segment;
            int const above = at + segments + 1;
            triangles.push_back({at, at + 1, above + 1});
            triangles.push_back({at, above + 1, above});
        }
}

} // namespace mrtool
