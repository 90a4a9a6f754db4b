#include "gsBase64.h"

#include "mrTest.h"

#include <bit>
#include <cstdint>
#include <limits>
#include <string_view>

using namespace std::literals;

TEST(GsBase64, WritesTheLeastSignificantByteFirst)
{
    EXPECT_EQ(gsBase64::encode(0.0), "AAAAAAAAAAA=");
    EXPECT_EQ(gsBase64::encode(1.0), "AAAAAAAA8D8=");
    EXPECT_EQ(gsBase64::encode(0.5), "AAAAAAAA4D8=");
    EXPECT_EQ(gsBase64::encode(std::bit_cast<double>(0xFFEEDDCCBBAA9988u)), "iJmqu8zd7v8=");
}

TEST(GsBase64, BringsBackEveryBit)
{
    std::uint64_t bits = 1;
    for (int i = 0; i < 1000; ++i) {
        bits = bits * 6364136223846793005u + 1442695040888963407u;
        if (i % 10 == 0)
            bits |= 0x7FF0000000000000u; // infinities and NaNs of all kinds among them
        double value = 0.0;
        ASSERT_EQ(gsBase64::decode(gsBase64::encode(std::bit_cast<double>(bits)), value), 1);
        ASSERT_EQ(std::bit_cast<std::uint64_t>(value), bits);
    }
}

TEST(GsBase64, RefusesAllElse)
{
    utString const refused[] = {utString(),
                                "",
                                "AAAAAAAA8D8",
                                "AAAAAAAA8D8==",
                                "AAAAAAAA8D8A",
                                "AAAAAAAA8D8= ",
                                " AAAAAAAA8D8=",
                                "AAAAAAAA8D9=",
                                "AAAAAAAA8D==",
                                "AAAAAAAA8-8=",
                                "AAAAAAAA8_8=",
                                "AAAA=AAA8D8=",
                                "AAAAAAAA\n8D8=",
                                utString("AAAA\0AAA8D8="sv),
                                "AAAAAAAA\xC3\xA9"
                                "8="};
    for (utString const& text : refused) {
        double value = 77.0;
        EXPECT_EQ(gsBase64::decode(text, value), 0) << text.c_str();
        EXPECT_EQ(value, 77.0) << text.c_str();
    }
}
