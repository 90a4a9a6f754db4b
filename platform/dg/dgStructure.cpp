#include "dgStructure.h"

#include <utility>

dgStructure::~dgStructure() = default;

dgStructureStore::~dgStructureStore() = default;

dgClientStructure::~dgClientStructure() = default;

void dgClientStructure::append(dgElement* element)
{
    std::unique_ptr<dgElement> owned(element);
    if (owned)
        m_elements.push_back(std::move(owned));
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
