// A mesh while a giTriBlock is put together. Used inside the project; not installed.
#pragma once

#include "giTriBlock.h"

#include <cstddef>
#include <memory>
#include <vector>

/// A mesh in its own coordinates.
struct gxMesh
{
    std::vector<giPoint3> points;
    std::vector<giVector3> normals; ///< one for each point, or empty
    std::vector<giPoint2> tus;      ///< one for each point, or empty
    std::vector<giTri> triangles;
};

inline std::size_t gx_at(int index)
{
    return static_cast<std::size_t>(index);
}

/// A triangle's index of a node.
/// @param which  0 to 2
inline int& gx_corner(giTri& triangle, int which)
{
    return which == 0 ? triangle.a : which == 1 ? triangle.b : triangle.c;
}

/// Makes a completed block of a mesh, whose arrays it takes over.
std::unique_ptr<giTriBlock> gx_new_block(gxMesh&& mesh);
