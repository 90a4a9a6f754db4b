#include "gxMeshNormals.h"

#include "gx_read_dmt_file.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <numeric>
#include <span>
#include <tuple>
#include <utility>

namespace {

giVector3 difference(giPoint3 const& to, giPoint3 const& from)
{
    return {to.x - from.x, to.y - from.y, to.z - from.z};
}

/// A corner of a triangle.
struct Corner
{
    int position; ///< the same number for all points at one place
    int point;
    int triangle;
    int which; ///< 0 to 2
    int group; ///< of triangles that form one smooth surface around the position
};

class NormalMaker
{
public:
    explicit NormalMaker(gxMesh const& flat) : m_flat(flat) { m_smooth.triangles = flat.triangles; }

    gxMesh make();

private:
    std::vector<int> positions() const;
    std::vector<Corner> corners() const;
    giVector3 face_normal(giTri const& tri) const;
    double angle(Corner const& corner) const;
    int group_of(giVector3 const& normal);
    void find_groups(std::span<Corner> corners);
    void make_nodes(std::span<Corner> corners);
    void append_node(Corner const& corner);

    gxMesh const& m_flat;
    gxMesh m_smooth;
    std::vector<giVector3> m_leaders; ///< for each group, the normal of the triangle that opened it
    std::vector<giVector3> m_sums;    ///< for each group, of its normals
};

std::vector<int> NormalMaker::positions() const
{
    auto const key = [this](int point) {
        giPoint3 const& p = m_flat.points[gx_at(point)];
        return std::tuple(p.x, p.y, p.z);
    };
    std::vector<int> order(m_flat.points.size());
    std::iota(order.begin(), order.end(), 0);
    std::sort(order.begin(), order.end(), [&](int a, int b) { return key(a) < key(b); });

    std::vector<int> position(order.size());
    for (std::size_t i = 1; i < order.size(); ++i) {
        bool const same = key(order[i]) == key(order[i - 1]);
        position[gx_at(order[i])] = position[gx_at(order[i - 1])] + (same ? 0 : 1);
    }
    return position;
}

std::vector<Corner> NormalMaker::corners() const
{
    std::vector<int> const position = positions();
    std::vector<Corner> all;
    all.reserve(m_flat.triangles.size() * 3);
    for (std::size_t i = 0; i < m_flat.triangles.size(); ++i) {
        giTri const& tri = m_flat.triangles[i];
        int which = 0;
        for (int const point : {tri.a, tri.b, tri.c})
            all.push_back({position[gx_at(point)], point, static_cast<int>(i), which++, 0});
    }
    std::sort(all.begin(), all.end(), [](Corner const& a, Corner const& b) {
        return std::tie(a.position, a.triangle, a.which) < std::tie(b.position, b.triangle, b.which);
    });
    return all;
}

/// Of length 1, or 0 for a triangle without area.
giVector3 NormalMaker::face_normal(giTri const& tri) const
{
    giPoint3 const& a = m_flat.points[gx_at(tri.a)];
    giVector3 normal =
        difference(m_flat.points[gx_at(tri.b)], a).cross(difference(m_flat.points[gx_at(tri.c)], a));
    return normal.unitize() ? normal : giVector3(0.0, 0.0, 0.0);
}

/// The weight of a triangle's normal at a corner. With it the way a polygon was cut into triangles has no effect.
double NormalMaker::angle(Corner const& corner) const
{
    giTri const& tri = m_flat.triangles[gx_at(corner.triangle)];
    int const points[] = {tri.a, tri.b, tri.c};
    giPoint3 const& here = m_flat.points[gx_at(points[corner.which])];
    giVector3 const next = difference(m_flat.points[gx_at(points[(corner.which + 1) % 3])], here);
    giVector3 const previous = difference(m_flat.points[gx_at(points[(corner.which + 2) % 3])], here);
    return std::atan2(next.cross(previous).length(), next.dot(previous));
}

/// Leaders are further from each other than the crease angle, so there are at most some twenty of them, however
/// many triangles meet.
int NormalMaker::group_of(giVector3 const& normal)
{
    static double const limit = std::cos(gx_dmt_crease_angle * std::numbers::pi / 180.0);
    bool const without_area = normal.dot(normal) == 0.0;
    for (std::size_t i = 0; i < m_leaders.size(); ++i)
        if (without_area || m_leaders[i].dot(normal) >= limit)
            return static_cast<int>(i);
    m_leaders.push_back(normal);
    m_sums.emplace_back(0.0, 0.0, 0.0);
    return static_cast<int>(m_leaders.size() - 1);
}

/// Puts the corners at one position into groups, and sums up the normals of each.
void NormalMaker::find_groups(std::span<Corner> corners)
{
    m_leaders.clear();
    m_sums.clear();
    for (Corner& corner : corners) {
        giVector3 const normal = face_normal(m_flat.triangles[gx_at(corner.triangle)]);
        corner.group = group_of(normal);
        giVector3& sum = m_sums[gx_at(corner.group)];
        sum = sum + normal * angle(corner);
    }
    for (giVector3& sum : m_sums)
        if (!sum.unitize())
            sum = giVector3(0.0, 0.0, 1.0);
}

/// Makes a node for each point and group among the corners at one position.
void NormalMaker::make_nodes(std::span<Corner> corners)
{
    auto const node = [](Corner const& corner) { return std::tie(corner.point, corner.group); };
    std::sort(corners.begin(), corners.end(),
              [&](Corner const& a, Corner const& b) { return node(a) < node(b); });
    Corner const* previous = nullptr;
    for (Corner const& corner : corners) {
        if (!previous || node(corner) != node(*previous))
            append_node(corner);
        previous = &corner;
        giTri& tri = m_smooth.triangles[gx_at(corner.triangle)];
        int* const indices[] = {&tri.a, &tri.b, &tri.c};
        *indices[corner.which] = static_cast<int>(m_smooth.points.size() - 1);
    }
}

void NormalMaker::append_node(Corner const& corner)
{
    m_smooth.points.push_back(m_flat.points[gx_at(corner.point)]);
    m_smooth.normals.push_back(m_sums[gx_at(corner.group)]);
    if (!m_flat.tus.empty())
        m_smooth.tus.push_back(m_flat.tus[gx_at(corner.point)]);
}

gxMesh NormalMaker::make()
{
    std::vector<Corner> all = corners();
    for (auto begin = all.begin(); begin != all.end();) {
        auto const end = std::find_if(begin, all.end(),
                                      [begin](Corner const& c) { return c.position != begin->position; });
        find_groups({begin, end});
        make_nodes({begin, end});
        begin = end;
    }
    return std::move(m_smooth);
}

} // namespace

gxMesh gx_with_normals(gxMesh const& flat)
{
    return NormalMaker(flat).make();
}
