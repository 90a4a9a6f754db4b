#include "dgStructure.h"

void dgClientStructure::append(dgElement* element)
{
    if (element)
        m_elements.emplace_back(element);
}

giBox3 dgClientStructure::bounding_box(int exact) const
{
    giBox3 box;
    for (auto const& element : m_elements) {
        giTriBlock const* const block = element->triangle_block();
        if (!block)
            continue;
        if (exact)
            block->nodes().compute_box();
        box.extend(block->nodes().box());
    }
    return box;
}
