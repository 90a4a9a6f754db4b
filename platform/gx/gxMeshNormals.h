// Normals for meshes that have none. Used inside the project; not installed.
#pragma once

#include "gxMesh.h"

/// Makes normals, and a node for each smooth surface at a point in place of the point. Points at one place with
/// the same texture coordinates become one.
/// @param flat  its normals are ignored
gxMesh gx_with_normals(gxMesh flat);

/// The same for a mesh without texture coordinates, no two of whose points are at one place.
gxMesh gx_with_normals_of_distinct(gxMesh flat);
