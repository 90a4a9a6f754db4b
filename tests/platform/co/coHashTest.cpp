#include "coHash.h"

#include "mrTest.h"

#include <set>
#include <string>

using namespace std::literals;

TEST(CoHash, GivesThePublishedValues)
{
    // Test vectors of the hash's authors.
    EXPECT_EQ(co_hash(utString("a")), 0xe40c292cu);
    EXPECT_EQ(co_hash("foobarbaz", 6), 0xbf9cf968u);
    EXPECT_EQ(co_hash(utString("\xff\x00\x00\x01"sv)), 0xc48fb86du);
    EXPECT_EQ(co_hash(utString()), 0x811c9dc5u);
    EXPECT_EQ(co_hash("a", -1), 0x811c9dc5u);
}

TEST(CoHash, SpreadsTextsByAllTheirBytes)
{
    std::set<std::size_t> buckets;
    for (auto const& [one, other] : {std::pair{"\x02"sv, "\0\x01"sv}, {"axxxxxx\0a"sv, "bxxxxxxa"sv}})
        EXPECT_NE(co_bucket_of_text(one), co_bucket_of_text(other));
    for (std::size_t length = 1; length < 32; ++length)
        for (std::size_t at = 0; at < length; ++at) {
            std::string text(length, '\0');
            text[at] = '\x80';
            buckets.insert(co_bucket_of_text(text) % 4294967296u);
        }
    // Two of 496 numbers of 32 bits are hardly ever the same.
    EXPECT_GE(buckets.size(), 495u);
}
