#include "mrTypes.h"

#include "mrTest.h"

#include "utString.h"

#include <gmock/gmock.h>

TEST(mrTypes, OnlyWholeWordsAreTaken)
{
    int number = 7;
    for (char const* text : {"Colour", "colour ", "colou", ""})
        EXPECT_EQ(mrTypes::parse_mrTexLayerType(text, number), 0) << text;
    EXPECT_EQ(number, 7);
}

TEST(mrTypes, ValuesWithoutAWordAreReported)
{
    utString text = "x";
    mrTypes::print(static_cast<mrMatPropType>(3), text);
    mrTypes::print(static_cast<mrImageEncapsulationType>(-2), text);
    mrTypes::print(static_cast<mrTexLayerType>(1), text);
    EXPECT_EQ(text, "x");
    mrTypes::print(mrMatPropInteger, text);
    EXPECT_EQ(text, "xinteger");
    EXPECT_THAT(reports(), testing::ElementsAre("source/utils/mrTypes.cpp: enum mrMatPropType: 3",
                                                "source/utils/mrTypes.cpp: Enum mrImageEncapsulationType: -2",
                                                "source/utils/mrTypes.cpp: Enum mrTexLayerType: 1"));
}
