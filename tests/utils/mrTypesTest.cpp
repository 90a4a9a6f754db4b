#include "mrTypes.h"

#include "mrTest.h"

#include "utString.h"

#include <gmock/gmock.h>

namespace {

using Adaptor = int (*)(utString const&, int&);

template <class Enum>
void expect_word(Enum value, char const* word, Adaptor adaptor)
{
    utString text = "x";
    mrTypes::print(value, text);
    EXPECT_EQ(text, (std::string("x") + word).c_str());
    int number = -1;
    EXPECT_EQ(adaptor(word, number), 1);
    EXPECT_EQ(number, value);
}

} // namespace

TEST(mrTypes, WordsBothWays)
{
    expect_word(mrMatPropString, "string", mrTypes::parse_mrMatPropType);
    expect_word(mrMatPropInteger, "integer", mrTypes::parse_mrMatPropType);
    expect_word(mrMatPropDouble, "double", mrTypes::parse_mrMatPropType);
    expect_word(mrImageEncapsulationNone, "none", mrTypes::parse_mrImageEncapsulationType);
    expect_word(mrImageEncapsulationEmbeddedPng, "embedded_png", mrTypes::parse_mrImageEncapsulationType);
    expect_word(mrTexLayerColour, "colour", mrTypes::parse_mrTexLayerType);
}

TEST(mrTypes, OtherTextsAreRefusedAndLeaveTheOutput)
{
    Adaptor const adaptors[] = {mrTypes::parse_mrMatPropType, mrTypes::parse_mrImageEncapsulationType,
                                mrTypes::parse_mrTexLayerType};
    for (char const* text : {"String", "DOUBLE", " string", "none ", "color", "colou", "embedded png", ""})
        for (Adaptor adaptor : adaptors) {
            int number = 7;
            EXPECT_EQ(adaptor(text, number), 0) << text;
            EXPECT_EQ(number, 7) << text;
        }
}

TEST(mrTypes, ValuesWithoutAWordAreReported)
{
    utString text = "x";
    mrTypes::print(static_cast<mrMatPropType>(3), text);
    mrTypes::print(static_cast<mrImageEncapsulationType>(-2), text);
    mrTypes::print(static_cast<mrTexLayerType>(1), text);
    EXPECT_EQ(text, "x");
    EXPECT_THAT(reports(), testing::ElementsAre("source/utils/mrTypes.cpp: enum mrMatPropType: 3",
                                                "source/utils/mrTypes.cpp: Enum mrImageEncapsulationType: -2",
                                                "source/utils/mrTypes.cpp: Enum mrTexLayerType: 1"));
}
