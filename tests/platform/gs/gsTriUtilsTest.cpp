#include "gsTriUtils.h"

#include "mrTest.h"

TEST(GsTriUtils, FillsABlockAndRepagesItUnchanged)
{
    giTriBlock block;
    EXPECT_EQ(gsTriUtils::get_tus(block), nullptr);
    for (int i = 0; i < 5; ++i) {
        gsTriUtils::check_out_nodes(block).append({1.0 * i, 2, 3});
        gsTriUtils::check_out_normals(block).emplace_back(0, 0, 1.0 * i);
        gsTriUtils::check_out_tus(block).append({0.5 * i, 1});
        gsTriUtils::check_out_triangles(block).push_back({i, i + 1, i + 2});
    }
    gsTriUtils::repage(block, nullptr, nullptr);

    ASSERT_EQ(block.nodes().size(), 5u);
    ASSERT_EQ(block.normals().size(), 5u);
    ASSERT_EQ(gsTriUtils::get_tus(block), block.tus());
    ASSERT_EQ(block.tus()->size(), 5u);
    ASSERT_EQ(block.triangles().size(), 5u);
    EXPECT_EQ(block.nodes()[4], (giPoint3{4, 2, 3}));
    EXPECT_EQ(block.normals()[4].z, 4.0);
    EXPECT_EQ((*block.tus())[4], (giPoint2{2, 1}));
    EXPECT_EQ(block.triangles()[4], (giTri{4, 5, 6}));
}

TEST(GsTriUtils, DeletesTheBlocksOfAList)
{
    giTriBlockcoDListPtrcoPtrcoDList blocks;
    blocks.append(new giTriBlock);
    blocks.append(new giTriBlock);
    gsTriUtils::delete_and_clear(blocks);
    EXPECT_TRUE(blocks.empty());
}
