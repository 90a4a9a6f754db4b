#include "gsTriUtils.h"

giBoxArrPoint3& gsTriUtils::check_out_nodes(giTriBlock& block)
{
    return block.m_nodes;
}

giNormArr& gsTriUtils::check_out_normals(giTriBlock& block)
{
    return block.m_normals;
}

giBoxArrPoint2& gsTriUtils::check_out_tus(giTriBlock& block)
{
    if (!block.m_tus)
        block.m_tus = std::make_unique<giBoxArrPoint2>();
    return *block.m_tus;
}

giTriArr& gsTriUtils::check_out_triangles(giTriBlock& block)
{
    return block.m_triangles;
}

giBoxArrPoint2 const* gsTriUtils::get_tus(giTriBlock const& block)
{
    return block.m_tus.get();
}

void gsTriUtils::repage(giTriBlock& block, int*, int*)
{
    block.m_nodes.release_spare_room();
    block.m_normals.shrink_to_fit();
    if (block.m_tus)
        block.m_tus->release_spare_room();
    block.m_triangles.shrink_to_fit();
}

void gsTriUtils::delete_and_clear(giTriBlockcoDListPtrcoPtrcoDList& blocks)
{
    for (giTriBlock* block : blocks)
        delete block;
    blocks.clear();
}

int gsTriUtils::in_range_inclusive(int value, int low, int high)
{
    return low <= value && value <= high;
}
