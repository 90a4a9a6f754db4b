// A mesh of triangles and the arrays it is made of.
#pragma once

#include "giBox.h"
#include "giPoint.h"
#include "giVector3.h"
#include "utExport.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

/// Points in a row, with the box around them.
template <class Point, class Box>
class giBoxArr
{
public:
    std::size_t size() const { return m_points.size(); }
    Point const& operator[](std::size_t index) const { return m_points[index]; }
    Point const* begin() const { return m_points.data(); }
    Point const* end() const { return m_points.data() + m_points.size(); }

    void append(Point const& point) { m_points.push_back(point); }
    void reserve(std::size_t count) { m_points.reserve(count); }
    /// Takes these in place of the points that are there.
    void adopt(std::vector<Point>&& points) { m_points = std::move(points); }
    void release_spare_room() { m_points.shrink_to_fit(); }

    /// Works out the box anew; box() does not follow the points by itself.
    void compute_box() const
    {
        m_box = Box();
        for (Point const& point : m_points)
            m_box.extend(point);
    }

    /// The box as it was last computed; empty before.
    Box const& box() const { return m_box; }

private:
    std::vector<Point> m_points;
    mutable Box m_box;
};

using giBoxArrPoint2 = giBoxArr<giPoint2, giBox2>;
using giBoxArrPoint3 = giBoxArr<giPoint3, giBox3>;
using giNormArr = std::vector<giVector3>;

/// A triangle: three node indices, from 0, counter-clockwise seen from its front.
struct giTri
{
    int a = 0;
    int b = 0;
    int c = 0;
    bool operator==(giTri const&) const = default;
};

using giTriArr = std::vector<giTri>;

/// Triangles over nodes, with a normal and, where there are any, a texture coordinate for each node.
///
/// The arrays stand beside each other and are not checked against each other: whoever reads a block takes
/// what fits together. gsTriUtils hands them out for filling.
class UT_API giTriBlock
{
public:
    giBoxArrPoint3 const& nodes() const { return m_nodes; }
    giNormArr const& normals() const { return m_normals; }
    /// Null until gsTriUtils::check_out_tus made the array.
    giBoxArrPoint2 const* tus() const { return m_tus.get(); }
    giTriArr const& triangles() const { return m_triangles; }

private:
    friend class gsTriUtils;

    giBoxArrPoint3 m_nodes;
    giNormArr m_normals;
    std::unique_ptr<giBoxArrPoint2> m_tus;
    giTriArr m_triangles;
};
