#include "gsBase64.h"

#include "mrTest.h"

#include <bit>
#include <cstdint>
#include <string_view>

using namespace std::literals;

TEST(gsBase64, WritesTheLeastSignificantByteFirstAndBringsBackEveryBit)
{
    EXPECT_EQ(gsBase64::encode(1.0), "AAAAAAAA8D8=");
    EXPECT_EQ(gsBase64::encode(std::bit_cast<double>(0xFFEEDDCCBBAA9988u)), "iJmqu8zd7v8=");
    std::uint64_t bits = 1;
    for (int i = 0; i < 1000; ++i) {
        bits = bits * 6364136223846793005u + 1442695040888963407u;
        double value = 0.0;
        ASSERT_EQ(gsBase64::decode(gsBase64::encode(std::bit_cast<double>(bits)), value), 1);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), bits);
    }
}

TEST(gsBase64, RefusesAnyOtherText)
{
    for (auto const text :
         {""sv, "AAAAAAAA8D8"sv, "AAAAAAAA8D8A"sv, "AAAAAAAA8D8= "sv, "AAAAAAAA8D9="sv, "AAAAAAAA8D=="sv,
          "AAAAAAAA8-8="sv, "AAAA\0AAA8D8="sv, "AAAAAAAA\xC3\xA9\x38="sv}) {
        double value = 77.0;
        EXPECT_EQ(gsBase64::decode(utString(text), value), 0) << text;
        EXPECT_EQ(value, 77.0) << text;
    }
}
