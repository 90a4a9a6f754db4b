#include "mrFMFacet.h"

#include "materialText.h"

#include <gmock/gmock.h>

#include <memory>

using testing::ElementsAre;

namespace {

std::string const state = "source/file/mrFMFacet.cpp: State";

} // namespace

TEST(mrFMFacet, WithoutAPlainMaterialItIsReportedAndNotReadThrough)
{
    mrFMFacet const none(nullptr, layers({"a"}));
    EXPECT_THAT(reports(), ElementsAre("source/file/mrFMFacet.cpp: Args"));
    EXPECT_TRUE(none.invalid());
    EXPECT_TRUE(none.plain_mat().invalid());
    EXPECT_EQ(none.textures().size(), 1u);
    EXPECT_EQ(written(none).find("plain_material"), std::string::npos);
    EXPECT_THAT(reports(), ElementsAre(state, state, state));
}

TEST(mrFMFacet, EqualityTakesTheLayersInOrder)
{
    mrFMFacet const ab(red(), layers({"a", "b"}));
    EXPECT_TRUE(ab == mrFMFacet(red(), layers({"a", "b"})));
    EXPECT_FALSE(ab == mrFMFacet(red(), layers({"b", "a"})));
    EXPECT_FALSE(ab == mrFMFacet(red(), layers({"a"})));
    EXPECT_FALSE(ab == mrFMFacet(red("other"), layers({"a", "b"})));
    EXPECT_FALSE(ab == mrFMFacet());
    EXPECT_TRUE(mrFMFacet() == mrFMFacet());
}

TEST(mrFMFacet, ComesBackFromItsElementAlsoInThePlaceOfAnother)
{
    mrFMFacet const original(red(), layers({"a", "b"}));
    mrFMFacet back;
    ASSERT_EQ(read(written(original), back), 1);
    EXPECT_TRUE(back == original);

    ASSERT_EQ(read("<facet>" + written(*std::unique_ptr<mrFMPlainMat>(red("other"))) + "</facet>", back), 1);
    EXPECT_EQ(back.plain_mat().name(), "other");
    EXPECT_EQ(back.textures().size(), 2u) << "layers are added, none here";
}

TEST(mrFMFacet, AFailedReadLeavesItInvalid)
{
    std::string const text = written(mrFMFacet(red(), layers({"a", "b"})));
    using Case = std::pair<std::string, std::size_t>;
    for (auto const& [bad, layer_count] : {
             Case{with(text, "<textures>", "<plain_material/><textures>"), 1},
             Case{"<facet/>", 1},
             Case{with(text, "<name>matt red", "<name>"), 1},
             Case{with(text, "<image_name>b", "<image_name>"), 2},
         }) {
        mrFMFacet target(red(), layers({"old"}));
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_TRUE(target.invalid()) << bad;
        EXPECT_EQ(target.textures().size(), layer_count) << bad;
        EXPECT_THAT(reports(), ElementsAre(state));
    }
}
