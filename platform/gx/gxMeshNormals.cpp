#include "gxMeshNormals.h"

#include "gx_read_dmt_file.h"
#include "gxMerger.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <numbers>
#include <span>
#include <tuple>
#include <utility>

namespace {

giVector3 difference(giPoint3 const& to, giPoint3 const& from)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

/// The angle of a vector in the upper half plane, within 0.00001. The run-time library's takes five times as long,
/// and there are three for each triangle.
double quick_angle(double x, double y)
{
    double const flat = std::abs(x);
    double const low = std::min(flat, y);
    double const high = std::max(flat, y);
    if (!(high > 0.0))
        return 0.0;
    double const t = low / high;
    double const square = t * t;
    // The odd polynomial of this degree that is nearest to the arctangent from 0 to 1.
    double angle =
        t * (0.99997726 +
             square * (-0.33262347 +
                       square * (0.19354346 +
                                 square * (-0.11643287 + square * (0.05265332 - square * 0.01172120)))));
    if (y > flat)
        angle = std::numbers::pi / 2.0 - angle;
    return x < 0.0 ? std::numbers::pi - angle : angle;
}

/// Single precision is more than a picture shows.
using Direction = std::array<float, 3>;

Direction direction_of(giVector3 const& vector)
{
    return {static_cast<float>(vector.x), static_cast<float>(vector.y), static_cast<float>(vector.z)};
}

giVector3 vector_of(Direction const& direction)
{
    return {static_cast<double>(direction[0]), static_cast<double>(direction[1]),
            static_cast<double>(direction[2])};
}

float dot(Direction const& a, Direction const& b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

/// What a triangle adds to the normals at its corners.
struct Face
{
    Direction normal; ///< of length 1, or 0 for a triangle without area
    float angles[3];  ///< the weights: with them the way a polygon was cut into triangles has no effect
};

Face make_face(giPoint3 const& a, giPoint3 const& b, giPoint3 const& c)
{
    giVector3 const ab = difference(b, a);
    giVector3 const bc = difference(c, b);
    giVector3 const ca = difference(a, c);
    giVector3 normal = ab.cross(bc);
    double const twice_area = normal.length();
    if (!normal.unitize())
        normal = giVector3(0.0, 0.0, 0.0);
    auto const angle = [twice_area](double cosine) {
        return static_cast<float>(quick_angle(cosine, twice_area));
    };
    return {direction_of(normal), {angle(-ca.dot(ab)), angle(-ab.dot(bc)), angle(-bc.dot(ca))}};
}

/// A corner of a triangle as one number: three times the triangle's, and which corner it is.
using Corner = int;

/// Makes the normals of a mesh no two of whose points are the same. Memory that is touched for the first time
/// takes as long as the arithmetic, so the triangles are changed where they lie, and nodes are kept small until
/// their number is known.
class NormalMaker
{
public:
    /// @param places  for each point the number of its place, which points with different texture coordinates
    ///                share, from 0 on without a gap; empty when each point is a place of its own
    NormalMaker(gxMesh&& mesh, std::vector<int>&& places)
        : m_mesh(std::move(mesh)), m_places(std::move(places))
    {}

    gxMesh make();

private:
    struct Node
    {
        int point;
        Direction normal;
    };

    int place(int point) const { return m_places.empty() ? point : m_places[gx_at(point)]; }
    int& node(Corner corner) { return gx_corner(m_mesh.triangles[gx_at(corner / 3)], corner % 3); }
    void find_faces();
    void find_corners();
    int group_of(Direction const& normal);
    void find_groups(std::span<Corner const> corners);
    void make_nodes(std::span<Corner const> corners);
    void make_nodes_of_point(std::span<Corner const> corners);
    void place_nodes();

    gxMesh m_mesh; ///< its triangles' indices become those of nodes, one place after the other
    std::vector<int> m_places;
    std::vector<Face> m_faces;
    std::vector<int> m_begins; ///< for each place, where its corners begin in m_corners; and the end of all
    std::vector<Corner> m_corners; ///< by their places, in the order of the triangles
    std::vector<Node> m_nodes;

    // At one place:
    std::vector<Direction> m_leaders; ///< for each group, the normal of the triangle that opened it
    std::vector<Direction> m_sums;    ///< for each group, of its normals
    std::vector<int> m_groups;        ///< for each corner, of triangles that form one smooth surface
};

void NormalMaker::find_faces()
{
    auto const point = [this](int index) -> giPoint3 const& { return m_mesh.points[gx_at(index)]; };
    m_faces.reserve(m_mesh.triangles.size());
    for (giTri const& tri : m_mesh.triangles)
        m_faces.push_back(make_face(point(tri.a), point(tri.b), point(tri.c)));
}

void NormalMaker::find_corners()
{
    int const last = m_places.empty() ? static_cast<int>(m_mesh.points.size()) - 1
                                      : *std::max_element(m_places.begin(), m_places.end());
    // Counts the corners at each place, one further on, so that their sums are where each begins.
    m_begins.assign(gx_at(last) + 2, 0);
    for (giTri const& tri : m_mesh.triangles)
        for (int const index : {tri.a, tri.b, tri.c})
            ++m_begins[gx_at(place(index)) + 1];
    for (std::size_t i = 1; i < m_begins.size(); ++i)
        m_begins[i] += m_begins[i - 1];

    m_corners.resize(m_mesh.triangles.size() * 3);
    Corner corner = 0;
    for (giTri const& tri : m_mesh.triangles)
        for (int const index : {tri.a, tri.b, tri.c})
            m_corners[gx_at(m_begins[gx_at(place(index))]++)] = corner++;
    // Each begin has become the next one's.
    m_begins.insert(m_begins.begin(), 0);
    m_begins.pop_back();
}

/// Leaders are further from each other than the crease angle, so there are at most some twenty of them, however
/// many triangles meet.
int NormalMaker::group_of(Direction const& normal)
{
    static auto const limit = static_cast<float>(std::cos(gx_dmt_crease_angle * std::numbers::pi / 180.0));
    bool const has_area = normal != Direction();
    for (std::size_t i = 0; i < m_leaders.size(); ++i)
        if (!has_area || dot(m_leaders[i], normal) >= limit)
            return static_cast<int>(i);
    m_leaders.push_back(normal);
    m_sums.push_back({});
    return static_cast<int>(m_leaders.size() - 1);
}

/// Puts the corners at one place into groups, and sums up the normals of each.
void NormalMaker::find_groups(std::span<Corner const> corners)
{
    m_leaders.clear();
    m_sums.clear();
    m_groups.clear();
    for (Corner const corner : corners) {
        Face const& face = m_faces[gx_at(corner / 3)];
        int const group = group_of(face.normal);
        Direction& sum = m_sums[gx_at(group)];
        for (std::size_t axis = 0; axis < 3; ++axis)
            sum[axis] += face.normal[axis] * face.angles[corner % 3];
        m_groups.push_back(group);
    }
}

/// Makes a node for each point and group among the corners at one place.
void NormalMaker::make_nodes(std::span<Corner const> corners)
{
    std::vector<std::tuple<int, int, Corner>> sorted; // by point and group
    for (std::size_t i = 0; i < corners.size(); ++i)
        sorted.emplace_back(node(corners[i]), m_groups[i], corners[i]);
    std::sort(sorted.begin(), sorted.end());
    std::pair<int, int> previous(-1, -1);
    for (auto const& [point, group, corner] : sorted) {
        if (previous != std::pair(point, group))
            m_nodes.push_back({point, m_sums[gx_at(group)]});
        previous = {point, group};
        node(corner) = static_cast<int>(m_nodes.size() - 1);
    }
}

/// The same where all corners have one point.
void NormalMaker::make_nodes_of_point(std::span<Corner const> corners)
{
    int const point = node(corners.front());
    int const first = static_cast<int>(m_nodes.size());
    for (Direction const& sum : m_sums)
        m_nodes.push_back({point, sum});
    for (std::size_t i = 0; i < corners.size(); ++i)
        node(corners[i]) = first + m_groups[i];
}

/// Puts the nodes into the mesh in the place of its points.
void NormalMaker::place_nodes()
{
    std::vector<giPoint3> points;
    std::vector<giPoint2> tus;
    points.reserve(m_nodes.size());
    tus.reserve(m_mesh.tus.empty() ? 0 : m_nodes.size());
    m_mesh.normals.clear();
    m_mesh.normals.reserve(m_nodes.size());
    for (Node const& node : m_nodes) {
        points.push_back(m_mesh.points[gx_at(node.point)]);
        if (!m_mesh.tus.empty())
            tus.push_back(m_mesh.tus[gx_at(node.point)]);
        giVector3 normal = vector_of(node.normal);
        m_mesh.normals.push_back(normal.unitize() ? normal : giVector3(0.0, 0.0, 1.0));
    }
    m_mesh.points = std::move(points);
    m_mesh.tus = std::move(tus);
}

gxMesh NormalMaker::make()
{
    find_faces();
    find_corners();
    m_nodes.reserve(m_mesh.points.size());
    for (std::size_t at = 0; at + 1 < m_begins.size(); ++at) {
        auto const begin = m_corners.cbegin();
        std::span<Corner const> const corners(begin + m_begins[at], begin + m_begins[at + 1]);
        if (corners.empty())
            continue;
        find_groups(corners);
        if (m_places.empty())
            make_nodes_of_point(corners);
        else
            make_nodes(corners);
    }
    m_faces = {};
    m_corners = {};
    place_nodes();
    return std::move(m_mesh);
}

/// Makes points at one place with the same texture coordinates one.
/// @tparam Size  3, or 5 where there are texture coordinates
template <std::size_t Size>
void merge_points(gxMesh& mesh)
{
    std::vector<std::array<double, Size>> keys;
    keys.reserve(mesh.points.size());
    for (std::size_t i = 0; i < mesh.points.size(); ++i) {
        giPoint3 const& point = mesh.points[i];
        if constexpr (Size == 5)
            keys.push_back({point.x, point.y, point.z, mesh.tus[i].x, mesh.tus[i].y});
        else
            keys.push_back({point.x, point.y, point.z});
    }
    gxMerger<double, Size> merger(keys.size() / 2);
    std::vector<int> numbers(keys.size());
    merger.add(keys, numbers.data());

    mesh.points.clear();
    mesh.tus.clear();
    for (std::array<double, Size> const& key : merger.keys()) {
        mesh.points.push_back({key[0], key[1], key[2]});
        if constexpr (Size == 5)
            mesh.tus.push_back({key[3], key[4]});
    }
    for (giTri& tri : mesh.triangles)
        tri = {numbers[gx_at(tri.a)], numbers[gx_at(tri.b)], numbers[gx_at(tri.c)]};
}

std::vector<int> find_places(std::vector<giPoint3> const& points)
{
    gxMerger<double, 3> merger(points.size());
    std::vector<int> places;
    places.reserve(points.size());
    for (giPoint3 const& point : points)
        places.push_back(merger.add({point.x, point.y, point.z}));
    return places;
}

} // namespace

gxMesh gx_with_normals(gxMesh flat)
{
    if (flat.tus.empty()) {
        merge_points<3>(flat);
        return gx_with_normals_of_distinct(std::move(flat));
    }
    merge_points<5>(flat);
    std::vector<int> places = find_places(flat.points);
    return NormalMaker(std::move(flat), std::move(places)).make();
}

gxMesh gx_with_normals_of_distinct(gxMesh flat)
{
    return NormalMaker(std::move(flat), {}).make();
}
