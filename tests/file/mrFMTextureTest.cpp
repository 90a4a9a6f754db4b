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
