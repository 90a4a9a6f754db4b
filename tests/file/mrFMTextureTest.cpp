#include "mrFMTexture.h"

#include "materialText.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

std::string const args = "source/file/mrFMTexture.cpp: Args";

mrFMTexture weave()
{
    return mrFMTexture("weave", mrTexLayerColour, 1, giColour(120, 60, 20, 0));
}

} // namespace

TEST(mrFMTexture, MisuseIsReportedAndServed)
{
    EXPECT_EQ(mrFMTexture("", mrTexLayerColour, 5, giColour()).recoloured(), 5);
    EXPECT_THAT(reports(), ElementsAre(args));

    mrFMTexture const none;
    EXPECT_TRUE(none.invalid() && none.image_name().invalid());
    EXPECT_EQ(none.layer_type(), mrTexLayerColour);
    EXPECT_EQ(none.recoloured(), 0);
    EXPECT_EQ(none.recolour(), giColour());
    written(none);
    EXPECT_THAT(reports(), ElementsAre(args, args, args, args, args));
}

TEST(mrFMTexture, AnInvalidSourceTakesTheNameAlone)
{
    mrFMTexture target = weave();
    EXPECT_TRUE(target == weave());
    target = mrFMTexture();
    EXPECT_TRUE(target.invalid());
    EXPECT_FALSE(target == mrFMTexture()) << "flag and colour are compared as they stand";
    EXPECT_TRUE(mrFMTexture(target) == mrFMTexture()) << "a copy starts from the defaults";
}

TEST(mrFMTexture, ElementAndRefusals)
{
    std::string const text = written(weave());
    mrFMTexture back;
    ASSERT_EQ(read(text, back), 1);
    EXPECT_TRUE(back == weave());
    using Case = std::pair<std::string, int>;
    for (auto const& [bad, recoloured] : {
             Case{with(text, "weave", ""), 0},
             Case{with(text, ">colour", ">image"), 0},
             Case{with(text, ">1<", ">2<"), 2},
             Case{with(text, "<blue>20", "<blue>"), 1},
             Case{text.substr(0, text.find("<recolour>")) + "</texture>", 1},
         }) {
        mrFMTexture target("old", mrTexLayerColour, 0, giColour());
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_EQ(target.image_name(), "old") << bad;
        EXPECT_EQ(target.recoloured(), recoloured) << bad;
        EXPECT_EQ(target.recolour(), giColour()) << bad;
    }
}
