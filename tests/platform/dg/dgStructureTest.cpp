#include "dgStructure.h"

#include "gsTriUtils.h"
#include "mrTest.h"

namespace {

struct Counted : dgElement
{
    explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
    ~Counted() override { --m_alive; }

private:
    int& m_alive;
};

} // namespace

TEST(dgClientStructure, OwnsItsElementsAndBoundsTheirNodes)
{
    int alive = 0;
    giTriBlock first;
    giTriBlock second;
    gsTriUtils::check_out_nodes(first).append({1, 2, 3});
    auto* const structure = new dgClientStructure;
    EXPECT_TRUE(structure->bounding_box(1).empty());
    structure->append(new Counted(alive));
    structure->append(nullptr);
    structure->append(new dgTriangleBlock(first, 0));
    structure->append(new dgTriangleBlock(second, 0));
    EXPECT_EQ(structure->size(), 3U);
    EXPECT_EQ(structure->bounding_box(1), giBox3({1, 2, 3}, {1, 2, 3}));

    gsTriUtils::check_out_nodes(second).append({-1, 0, 4});
    EXPECT_EQ(structure->bounding_box(1), giBox3({-1, 0, 3}, {1, 2, 4}));
    EXPECT_EQ(alive, 1);
    structure->unreference();
    EXPECT_EQ(alive, 0);
}
