// Mesh files.
#pragma once

#include "gsTriUtils.h"
#include "utExport.h"
#include "utString.h"

/// Appends the meshes of a file to @p blocks, one block a mesh, in the scene's own coordinates.
///
/// Reads what Assimp reads (OBJ, STL, PLY, glTF, 3DS, FBX and more), the format chosen by content and name.
/// Polygons become triangles, lines and points are left out, normals are made where they are missing, points
/// that are no finite number and triangles that use them, or an index out of range, are left out. It is only
/// as safe as Assimp is, which damaged files can crash: read files from strangers in a process of their own.
///
/// @param path    path of the file
/// @param blocks  receives the new blocks, which are the caller's
/// @param reason  where not null, receives in words why there are none
/// @return 1 when there is at least one block, else 0 with @p blocks unchanged
UT_API int gx_read_dmt_file(utString path, giTriBlockcoDListPtrcoPtrcoDList& blocks,
                            utString* reason = nullptr);
