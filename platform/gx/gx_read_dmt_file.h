// Mesh files.
#pragma once

#include "gsTriUtils.h"
#include "utExport.h"
#include "utString.h"

#include <cstdint>
#include <vector>

/// A file whose meshes have more triangles, or three times as many points, is refused. A mesh counts as often
/// as the scene shows it: a small file can show one a million times.
constexpr std::int64_t gx_max_dmt_triangles = std::int64_t{1} << 24;

/// Where normals are made, triangles that meet at a smaller angle than this look like one smooth surface.
/// In degrees.
constexpr double gx_dmt_crease_angle = 50.0;

/// Appends the meshes of a file to @p blocks, one block for each time that the scene shows a mesh, in the
/// scene's own coordinates.
///
/// Reads STL, and what Assimp reads (OBJ, PLY, glTF, 3DS, FBX and more), the format chosen by content and name.
/// Polygons become triangles; lines and points are left out, and counted in the reason where there is nothing else:
/// "the file holds no triangles, only 3 points and 1 line". Points that are no finite number, and triangles
/// that use them or an index out of range, are left out. Normals have length 1 and are made where a mesh has
/// none, or one that is no direction, and for an STL file whose normals do not agree with its triangles. A block has
/// texture coordinates when its mesh has. A mirrored mesh keeps the fronts of its triangles outside.
///
/// For formats other than STL it is only as safe as Assimp is, which damaged files can crash, keep busy for hours, or
/// have take or leak all memory: read files from strangers in a process of their own. What is no regular file is refused
/// without being read.
///
/// @param path       path of the file
/// @param blocks     receives the new blocks, which are the caller's
/// @param reason     where not null, receives the reason for a failure, in words
/// @param materials  where not null, receives for each new block the name of its material, as the file has
///                   it or as Assimp makes it up; may be empty
/// @return 1 when there is at least one block, else 0 with @p blocks and @p materials unchanged
UT_API int gx_read_dmt_file(utString path, giTriBlockcoDListPtrcoPtrcoDList& blocks,
                            utString* reason = nullptr, std::vector<utString>* materials = nullptr);
