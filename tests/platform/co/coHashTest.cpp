#include "coHash.h"

#include "mrTest.h"

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

TEST(CoHash, GivesThePublishedValuesUnderAKey)
{
    // Of the hash's authors: key 00 to 0f, as many of the bytes 00, 01, 02 and so on.
    coHashKey const key{0x0706050403020100u, 0x0f0e0d0c0b0a0908u};
    std::string_view const bytes = "\0\1\2\3\4\5\6\7\x8\x9\xa\xb\xc\xd\xe"sv;
    EXPECT_EQ(co_keyed_hash("", key), 0xabac0158050fc4dcu);
    EXPECT_EQ(co_keyed_hash(bytes.substr(0, 7), key), 0xd3927d989bb11140u);
    EXPECT_EQ(co_keyed_hash(bytes.substr(0, 8), key), 0x369095118d299a8eu);
    EXPECT_EQ(co_keyed_hash(bytes, key), 0xd320d86d2a519956u);
}
