#include "utClock.h"

#include "mrTest.h"

TEST(UtClock, StandsStillWhereItIsSet)
{
    std::time_t const before = std::time(nullptr);
    utClock::set(5);
    EXPECT_EQ(utClock::now(), 5);
    utClock::set(-1);
    EXPECT_EQ(utClock::now(), -1);
    utClock::unset();
    EXPECT_GE(utClock::now(), before);
    EXPECT_LE(utClock::now(), std::time(nullptr));
}
