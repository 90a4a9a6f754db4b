#include "mrFMFacet.h"

#include "materialText.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

TEST(mrFMFacet, WithoutAPlainMaterialItIsReportedAndNotReadThrough)
{
    std::string const state = "source/file/mrFMFacet.cpp: State";
    mrFMFacet const none(nullptr, layers({"a"}));
    EXPECT_THAT(reports(), ElementsAre("source/file/mrFMFacet.cpp: Args"));
    EXPECT_TRUE(none.invalid() && none.plain_mat().invalid());
    EXPECT_EQ(none.textures().size(), 1u);
    EXPECT_EQ(written(none).find("plain_material"), std::string::npos);
    EXPECT_THAT(reports(), ElementsAre(state, state, state));
    EXPECT_TRUE(none == mrFMFacet());
}

TEST(mrFMFacet, AReadReplacesThePlainMaterialAndAddsLayers)
{
    std::string const text = written(mrFMFacet(red(), layers({"a", "b"})));
    mrFMFacet target(red("other"), layers({"old"}));
    EXPECT_EQ(read(text, target), 1);
    EXPECT_TRUE(target == mrFMFacet(red(), layers({"old", "a", "b"})));
    EXPECT_FALSE(target == mrFMFacet(red("other"), layers({"old", "a", "b"})));
    EXPECT_FALSE(target == mrFMFacet(red(), layers({"old", "b", "a"})));
}
