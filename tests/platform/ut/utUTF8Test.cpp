#include "utUTF8.h"

#include "mrTest.h"

TEST(utUTF8, MakesUTF8OfAnyBytes)
{
    EXPECT_EQ(utUTF8::from_any("Müller 木 \U0001f333"), "Müller 木 \U0001f333");
    EXPECT_EQ(utUTF8::from_any("M\xfcller"), "Müller");
    // Too long a form, a surrogate, beyond the last character, cut short: bytes, each a character.
    EXPECT_EQ(utUTF8::from_any("\xc0\xaf"), "\u00c0\u00af");
    EXPECT_EQ(utUTF8::from_any("\xed\xa0\x80"), "\u00ed\u00a0\u0080");
    EXPECT_EQ(utUTF8::from_any("\xf4\x90\x80\x80"), "\u00f4\u0090\u0080\u0080");
    EXPECT_EQ(utUTF8::from_any("a\xe6\x9c"), "a\u00e6\u009c");
}
