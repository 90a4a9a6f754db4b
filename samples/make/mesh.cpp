#include "mesh.h"

#include <cmath>
#include <numbers>
#include <utility>

namespace {

giPoint2 along_curve(giPoint2 const& before, giPoint2 const& from, giPoint2 const& to, giPoint2 const& after,
                     double t)
{
    // Catmull and Rom: the tangent at a point is half the way between its neighbours.
    auto const blend = [t](double p0, double p1, double p2, double p3) {
        return 0.5 * (2 * p1 + t * (p2 - p0) + t * t * (2 * p0 - 5 * p1 + 4 * p2 - p3) +
                      t * t * t * (3 * p1 - p0 - 3 * p2 + p3));
    };
    return {blend(before.x, from.x, to.x, after.x), blend(before.y, from.y, to.y, after.y)};
}

double distance(giPoint2 const& a, giPoint2 const& b)
{
    return std::hypot(b.x - a.x, b.y - a.y);
}

/// The direction to the right of the stretch at one of its points.
giPoint2 right_of(Stretch const& stretch, std::size_t at)
{
    giPoint2 const& before = stretch[at == 0 ? 0 : at - 1];
    giPoint2 const& after = stretch[at + 1 == stretch.size() ? at : at + 1];
    double const length = distance(before, after);
    return {(after.y - before.y) / length, -(after.x - before.x) / length};
}

giVector3 as_vector(giPoint3 const& point)
{
    return {point.x, point.y, point.z};
}

giVector3 sum(giVector3 const& a, giVector3 const& b)
{
    return {a.x + b.x, a.y + b.y, a.z + b.z};
}

giVector3 unit(giVector3 vector)
{
    vector.unitize();
    return vector;
}

/// Joins two rows of as many points, of which the second follows the first.
void add_quad_strip(Mesh& mesh, int from, int to)
{
    for (int k = 0; from + k + 1 < to; ++k)
        mesh.faces.push_back({from + k, from + k + 1, to + k + 1, to + k});
}

/// Appends a ring of the surface of revolution.
void add_ring(Mesh& mesh, giPoint2 const& point, giPoint2 const& normal, double along, int segments)
{
    for (int segment = 0; segment <= segments; ++segment) {
        double const around = static_cast<double>(segment) / segments;
        double const angle = 2 * std::numbers::pi * (segment % segments) / segments;
        double const sine = std::sin(angle);
        double const cosine = std::cos(angle);
        mesh.points.push_back({{point.x * sine, point.y, point.x * cosine},
                               {normal.x * sine, normal.y, normal.x * cosine},
                               {around, along}});
    }
}

/// Joins two neighbouring rings; where one is a point, by triangles.
void join_rings(Mesh& mesh, int lower, int upper, int segments)
{
    auto const is_point = [&mesh](int ring) {
        giPoint3 const& place = mesh.points[static_cast<std::size_t>(ring)].place;
        return std::abs(place.x) + std::abs(place.z) < 1e-9;
    };
    if (is_point(lower))
        for (int s = 0; s < segments; ++s)
            mesh.faces.push_back({lower + s, upper + s + 1, upper + s, -1});
    else if (is_point(upper))
        for (int s = 0; s < segments; ++s)
            mesh.faces.push_back({lower + s, lower + s + 1, upper + s, -1});
    else
        add_quad_strip(mesh, lower, upper);
}

void add_flat_quad(Mesh& mesh, std::array<giPoint3, 4> const& corners)
{
    giVector3 const diagonal = as_vector(corners[2]) - as_vector(corners[0]);
    giVector3 const other = as_vector(corners[3]) - as_vector(corners[1]);
    giVector3 const normal = unit(diagonal.cross(other));
    int const first = static_cast<int>(mesh.points.size());
    for (giPoint3 const& corner : corners)
        mesh.points.push_back({corner, normal, {}});
    mesh.faces.push_back({first, first + 1, first + 2, first + 3});
}

/// The corners of a level of a slab, counter-clockwise seen from above.
std::array<giPoint3, 4> corners(double x, double y, double z)
{
    return {{{-x, y, z}, {x, y, z}, {x, y, -z}, {-x, y, -z}}};
}

} // namespace

Stretch curve(Stretch const& through, int steps)
{
    Stretch points;
    std::size_t const last = through.size() - 1;
    for (std::size_t at = 0; at < last; ++at)
        for (int step = 0; step < steps; ++step)
            points.push_back(along_curve(through[at == 0 ? 0 : at - 1], through[at], through[at + 1],
                                         through[at + 1 == last ? last : at + 2],
                                         static_cast<double>(step) / steps));
    points.push_back(through[last]);
    return points;
}

Mesh revolve(std::vector<Stretch> const& profile, int segments)
{
    double total = 0;
    for (Stretch const& stretch : profile)
        for (std::size_t at = 1; at < stretch.size(); ++at)
            total += distance(stretch[at - 1], stretch[at]);

    Mesh mesh;
    double length = 0;
    for (Stretch const& stretch : profile)
        for (std::size_t at = 0; at < stretch.size(); ++at) {
            int const ring = static_cast<int>(mesh.points.size());
            if (at > 0)
                length += distance(stretch[at - 1], stretch[at]);
            add_ring(mesh, stretch[at], right_of(stretch, at), length / total, segments);
            if (at > 0)
                join_rings(mesh, ring - segments - 1, ring, segments);
        }
    return mesh;
}

Mesh slab(giVector3 const& size, double bevel)
{
    double const x = size.x / 2;
    double const z = size.z / 2;
    std::array<std::array<giPoint3, 4>, 4> const levels{corners(x - bevel, 0, z - bevel),
                                                        corners(x, bevel, z), corners(x, size.y - bevel, z),
                                                        corners(x - bevel, size.y, z - bevel)};
    Mesh mesh;
    auto const& bottom = levels.front();
    add_flat_quad(mesh, {bottom[3], bottom[2], bottom[1], bottom[0]});
    add_flat_quad(mesh, levels.back());
    for (std::size_t level = 0; level + 1 < levels.size(); ++level)
        for (std::size_t side = 0; side < 4; ++side) {
            std::size_t const next = (side + 1) % 4;
            add_flat_quad(mesh, {levels[level][side], levels[level][next], levels[level + 1][next],
                                 levels[level + 1][side]});
        }
    return mesh;
}

Mesh sheet(Stretch const& profile, double width)
{
    Mesh mesh;
    double length = 0;
    for (std::size_t at = 0; at < profile.size(); ++at) {
        if (at > 0)
            length += distance(profile[at - 1], profile[at]);
        giPoint2 const right = right_of(profile, at);
        giVector3 const normal{0, -right.y, -right.x};
        int const first = static_cast<int>(mesh.points.size());
        for (double side : {0.0, 1.0})
            mesh.points.push_back(
                {{width * (side - 0.5), profile[at].y, profile[at].x}, normal, {side, -length / width}});
        if (at > 0)
            mesh.faces.push_back({first - 2, first, first + 1, first - 1});
    }
    return mesh;
}

Mesh tube(std::vector<giPoint3> const& path, std::vector<double> const& radius, int sides)
{
    Mesh mesh;
    for (std::size_t at = 0; at < path.size(); ++at) {
        giVector3 const before = as_vector(path[at == 0 ? 0 : at - 1]);
        giVector3 const after = as_vector(path[at + 1 == path.size() ? at : at + 1]);
        giVector3 const forward = unit(after - before);
        giVector3 const right = unit(giVector3(0, 0, 1).cross(forward));
        giVector3 const up = forward.cross(right);
        int const first = static_cast<int>(mesh.points.size());
        for (int side = 0; side <= sides; ++side) {
            double const angle = 2 * std::numbers::pi * (side % sides) / sides;
            giVector3 const out = sum(right * std::cos(angle), up * std::sin(angle));
            giVector3 const place = sum(as_vector(path[at]), out * radius[at]);
            mesh.points.push_back({{place.x, place.y, place.z},
                                   out,
                                   {static_cast<double>(side) / sides,
                                    static_cast<double>(at) / static_cast<double>(path.size() - 1)}});
        }
        if (at > 0)
            add_quad_strip(mesh, first - sides - 1, first);
    }
    return mesh;
}

Mesh moved(Mesh mesh, giVector3 const& by)
{
    for (MeshPoint& point : mesh.points)
        point.place = {point.place.x + by.x, point.place.y + by.y, point.place.z + by.z};
    return mesh;
}

Mesh tipped_right(Mesh mesh)
{
    for (MeshPoint& point : mesh.points) {
        point.place = {point.place.y, -point.place.x, point.place.z};
        point.normal = {point.normal.y, -point.normal.x, point.normal.z};
    }
    return mesh;
}

Mesh textured_by_side(Mesh mesh, double size)
{
    for (MeshPoint& point : mesh.points) {
        giPoint3 const& place = point.place;
        double const x = std::abs(point.normal.x);
        double const y = std::abs(point.normal.y);
        double const z = std::abs(point.normal.z);
        if (y >= x && y >= z)
            point.tu = {place.x / size, -place.z / size};
        else if (z >= x)
            point.tu = {place.x / size, place.y / size};
        else
            point.tu = {-place.z / size, place.y / size};
    }
    return mesh;
}

Mesh textured_often(Mesh mesh, double around, double along)
{
    for (MeshPoint& point : mesh.points)
        point.tu = {point.tu.x * around, point.tu.y * along};
    return mesh;
}

void append(Mesh& mesh, Mesh const& more)
{
    int const first = static_cast<int>(mesh.points.size());
    mesh.points.insert(mesh.points.end(), more.points.begin(), more.points.end());
    for (Mesh::Face const& face : more.faces) {
        Mesh::Face shifted{};
        for (std::size_t corner = 0; corner < face.size(); ++corner)
            shifted[corner] = face[corner] < 0 ? face[corner] : face[corner] + first;
        mesh.faces.push_back(shifted);
    }
}
