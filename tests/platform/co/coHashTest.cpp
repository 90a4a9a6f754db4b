#include "coHash.h"

#include "mrTest.h"

#include <string_view>
#include <utility>

using namespace std::literals;

TEST(coHash, GivesThePublishedValues)
{
    // Test vectors of the hash's authors.
    EXPECT_EQ(co_hash(utString("a")), 0xe40c292cu);
    EXPECT_EQ(co_hash("foobarbaz", 6), 0xbf9cf968u);
    EXPECT_EQ(co_hash(utString("\xff\x00\x00\x01"sv)), 0xc48fb86du);
    EXPECT_EQ(co_hash(utString()), 0x811c9dc5u);
    EXPECT_EQ(co_hash("a", -1), 0x811c9dc5u);
}

TEST(coHash, SpreadsTextsByAllTheirBytes)
{
    for (auto const& [one, other] : {std::pair{"\x02"sv, "\0\x01"sv}, {"axxxxxx\0a"sv, "bxxxxxxa"sv}})
        EXPECT_NE(co_bucket_of_text(one), co_bucket_of_text(other));
}
