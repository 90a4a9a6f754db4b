#include "dgStructure.h"

#include "gsTriUtils.h"

#include <gtest/gtest.h>

#include <limits>

namespace {

struct Counted : dgElement
{
    explicit Counted(int& alive) : m_alive(alive) { ++m_alive; }
    ~Counted() override { --m_alive; }

private:
    int& m_alive;
};

} // namespace

TEST(dgClientStructure, OwnsItsElementsAndTakesNoNull)
{
    int alive = 0;
    auto* const structure = new dgClientStructure;
    structure->append(new Counted(alive));
    structure->append(nullptr);
    structure->append(new Counted(alive));
    EXPECT_EQ(structure->size(), 2U);
    EXPECT_EQ(alive, 2);
    structure->unreference();
    EXPECT_EQ(alive, 0);
}

TEST(dgClientStructure, BoundsTheNodesThatAreFinite)
{
    double const infinite = std::numeric_limits<double>::infinity();
    giTriBlock first;
    giTriBlock second;
    gsTriUtils::check_out_nodes(first).append({1, 2, 3});
    gsTriUtils::check_out_nodes(first).append({infinite, 9, 9});
    auto* const structure = new dgClientStructure;
    EXPECT_TRUE(structure->bounding_box(1).empty());

    structure->append(new dgTriangleBlock(first, 0));
    structure->append(new dgShadingMethod(dgShadingSmooth));
    structure->append(new dgTriangleBlock(second, 0));
    EXPECT_EQ(structure->bounding_box(1), giBox3({1, 2, 3}, {1, 2, 3}));

    gsTriUtils::check_out_nodes(second).append({-1, 0, 4});
    EXPECT_EQ(structure->bounding_box(1), giBox3({-1, 0, 3}, {1, 2, 4}));
    structure->unreference();
}
