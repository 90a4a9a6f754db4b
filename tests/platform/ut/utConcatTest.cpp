#include "utConcat.h"

#include "mrTest.h"

TEST(utConcat, QuotesTexts)
{
    EXPECT_EQ(ut_quote("a \"b\\"), "\"a \\\"b\\\\\"");
    EXPECT_EQ(ut_quote_short(std::string(60, 'x')), ut_quote(std::string(60, 'x')));
    // Both parts of a long text end between characters.
    EXPECT_EQ(ut_quote_short(std::string(43, 'x') + "üü" + std::string(14, 'y')),
              ut_quote(std::string(43, 'x')) + "..." + ut_quote("ü" + std::string(14, 'y')));
}
