// Normals for meshes that have none. Used inside the project; not installed.
#pragma once

#include "giTriBlock.h"

#include <cstddef>
#include <vector>

/// A mesh in its own coordinates, while a giTriBlock is put together.
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

/// Makes normals, and a node for each smooth surface at a point in place of the point.
/// @param flat  its normals are ignored
gxMesh gx_with_normals(gxMesh const& flat);
