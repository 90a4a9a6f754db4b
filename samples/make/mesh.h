// Meshes made of a few simple shapes. Lengths are in centimetres, y is up.
#pragma once

#include "giPoint.h"
#include "giVector3.h"

#include <array>
#include <vector>

struct MeshPoint
{
    giPoint3 place;
    giVector3 normal;
    giPoint2 tu; ///< (0, 0) is the lower left corner of a texture, which repeats after 1
};

struct Mesh
{
    /// Three or four points, counter-clockwise seen from outside; -1 stands for no fourth.
    using Face = std::array<int, 4>;

    std::vector<MeshPoint> points;
    std::vector<Face> faces;
};

/// Points that a surface follows without an edge.
using Stretch = std::vector<giPoint2>;

/// A curve through all the points, with so many steps from each to the next.
Stretch curve(Stretch const& through, int steps);

/// A surface of revolution about the y axis. A texture goes once around it and once along the whole profile.
/// @param profile  stretches of (radius, height) that start at the bottom and run up the outside; each begins
///                 where the one before ended, with an edge there
Mesh revolve(std::vector<Stretch> const& profile, int segments);

/// A box with bevelled edges, standing on the plane of y = 0 in the middle of it.
Mesh slab(giVector3 const& size, double bevel);

/// A sheet across the z-y plane.
/// @param profile  points of (z, y) from its far to its near end
/// @param width    along x
Mesh sheet(Stretch const& profile, double width);

/// A tube along a path that does not run along the z axis, with open ends.
/// @param radius  at each point of the path
Mesh tube(std::vector<giPoint3> const& path, std::vector<double> const& radius, int sides);

Mesh moved(Mesh mesh, giVector3 const& by);

/// What pointed up points to the right.
Mesh tipped_right(Mesh mesh);

/// Lays the texture straight on from the side that each point faces most.
/// @param size  the length that the texture covers once
Mesh textured_by_side(Mesh mesh, double size);

/// Lays the texture so many times around and along.
Mesh textured_often(Mesh mesh, double around, double along);

void append(Mesh& mesh, Mesh const& more);
