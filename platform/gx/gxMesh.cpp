#include "gxMesh.h"

#include "gsTriUtils.h"

#include <utility>

std::unique_ptr<giTriBlock> gx_new_block(gxMesh&& mesh)
{
    auto block = std::make_unique<giTriBlock>();
    giBoxArrPoint3& nodes = gsTriUtils::check_out_nodes(*block);
    nodes.adopt(std::move(mesh.points));
    nodes.compute_box();
    if (!mesh.tus.empty()) {
        giBoxArrPoint2& tus = gsTriUtils::check_out_tus(*block);
        tus.adopt(std::move(mesh.tus));
        tus.compute_box();
    }
    gsTriUtils::check_out_normals(*block) = std::move(mesh.normals);
    gsTriUtils::check_out_triangles(*block) = std::move(mesh.triangles);
    gsTriUtils::repage(*block, nullptr, nullptr);
    return block;
}
