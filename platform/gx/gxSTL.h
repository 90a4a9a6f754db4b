// STL files. Used inside the project; not installed.
#pragma once

#include "gxMesh.h"
#include "utExport.h"
#include "utString.h"

#include <cstdio>
#include <vector>

/// A normal that an STL file states agrees with its triangle's winding when there are at most so many degrees
/// between them.
constexpr double gx_stl_agreement_angle = 10.0;

/// Reads an STL file, binary or text. Safe for untrusted input; takes some 300 bytes for each triangle, 500 and the text
/// itself where it is text.
///
/// The normals that a solid states are believed when all are directions and those of more than half of its triangles
/// agree with the winding; its triangles are then flat, and one whose own does not agree stands upright on the
/// triangle. Otherwise the solid's normals are made. Points that are no finite number are left out with their
/// triangles; a loop of more than three points is cut up. Colours are passed over.
///
/// @param file    at its beginning
/// @param solids  receives a mesh with normals for each solid that has triangles
/// @param reason  set where the file has more triangles than gx_max_dmt_triangles, and where its text is wrong, with
///                the line; there are no solids then
/// @return whether it is an STL file; one that is neither binary, to the byte, nor begins with "solid" is none
UT_API bool gx_read_stl(std::FILE* file, std::vector<gxMesh>& solids, utString& reason);
