#include "mrTypes.h"

#include "mrTest.h"

#include "utString.h"

#include <gmock/gmock.h>

TEST(mrTypes, ValuesWithoutAWordAreReported)
{
    utString text = "x";
    mrTypes::print(static_cast<mrMatPropType>(3), text);
    mrTypes::print(static_cast<mrImageEncapsulationType>(-2), text);
    mrTypes::print(static_cast<mrTexLayerType>(1), text);
    EXPECT_EQ(text, "x");
    int number = 7;
    EXPECT_EQ(mrTypes::parse_mrTexLayerType("Colour", number) + mrTypes::parse_mrTexLayerType("", number), 0);
    EXPECT_EQ(number, 7);
    EXPECT_THAT(reports(), testing::ElementsAre("source/utils/mrTypes.cpp: enum mrMatPropType: 3",
                                                "source/utils/mrTypes.cpp: Enum mrImageEncapsulationType: -2",
                                                "source/utils/mrTypes.cpp: Enum mrTexLayerType: 1"));
}
