// STL files: every mesh that is read holds together.
#include "fuzz.h"

#include "gxOpenFile.h"
#include "gxSTL.h"

#include <cmath>

void try_input(std::string const& bytes)
{
    utString reason;
    gxFile const file = gx_open_memory(bytes, reason);
    if (!file)
        return; // there are no bytes
    std::vector<gxMesh> solids;
    bool const known = gx_read_stl(file.get(), solids, reason);
    require(known || solids.empty(), "a file that is none gives nothing");
    for (gxMesh const& mesh : solids) {
        require(!mesh.triangles.empty(), "a mesh has triangles");
        require(mesh.normals.size() == mesh.points.size(), "each node has a normal");
        for (giVector3 const& normal : mesh.normals)
            require(std::abs(normal.length() - 1.0) < 1e-6, "a normal is a direction");
        for (giPoint3 const& point : mesh.points)
            require(std::isfinite(point.x + point.y + point.z), "a point is somewhere");
        for (giTri const& tri : mesh.triangles)
            for (int const index : {tri.a, tri.b, tri.c})
                require(gx_at(index) < mesh.points.size(), "a triangle has its nodes");
    }
}
