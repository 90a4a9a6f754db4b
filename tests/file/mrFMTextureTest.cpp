#include "mrFMTexture.h"

#include "materialText.h"

#include <gmock/gmock.h>

TEST(mrFMTexture, AnInvalidOneIsReportedAndGivesItsNameAlone)
{
    std::string const args = "source/file/mrFMTexture.cpp: Args";
    EXPECT_EQ(mrFMTexture("", mrTexLayerColour, 5, giColour()).recoloured(), 5);
    EXPECT_THAT(reports(), testing::ElementsAre(args));

    mrFMTexture const none;
    EXPECT_TRUE(none.invalid() && none.image_name().invalid());
    written(none);
    EXPECT_THAT(reports(), testing::ElementsAre(args, args));

    mrFMTexture target("weave", mrTexLayerColour, 0, giColour(120, 60, 20, 0));
    target = none;
    EXPECT_TRUE(target.invalid());
    EXPECT_FALSE(target == none) << "flag and colour are compared as they stand";
    EXPECT_TRUE(mrFMTexture(target) == none) << "a copy starts from the defaults";
}

TEST(mrFMTexture, RefusalsLeaveTheNameAndStopAtTheirStep)
{
    std::string const text = written(mrFMTexture("weave", mrTexLayerColour, 1, giColour(120, 60, 20, 0)));
    using Case = std::pair<std::string, int>;
    for (auto const& [bad, recoloured] : {
             Case{with(text, ">colour", ">image"), 0},
             Case{with(text, ">1<", ">2<"), 2},
             Case{with(text, "<blue>20", "<blue>"), 1},
         }) {
        mrFMTexture target("old", mrTexLayerColour, 0, giColour());
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_EQ(target.image_name(), "old") << bad;
        EXPECT_EQ(target.recoloured(), recoloured) << bad;
        EXPECT_EQ(target.recolour(), giColour()) << bad;
    }
}
