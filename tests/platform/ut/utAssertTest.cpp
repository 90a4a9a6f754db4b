#include "utAssert.h"

#include "mrTest.h"

#include <string>

TEST(UtAssert, ReportsWhatIsRequiredWithTheFileFromTheRoot)
{
    UT_REQUIRE(1 + 1 == 2, "fine");
    UT_REQUIRE(1 + 1 == 3, "Args");
    ut_report_assert_failure("some/file", 7, ut_build_assert_varargs("%d of %s", 2, "three"));
    EXPECT_EQ(reports(), (std::vector<std::string>{"tests/platform/ut/utAssertTest.cpp: Args",
                                                   "some/file: 2 of three"}));
}

TEST(UtAssert, WritesToStandardErrorByDefault)
{
    utAssertHandler const recording = ut_set_assert_handler(nullptr);
    testing::internal::CaptureStderr();
    ut_report_assert_failure("some/file.cpp", 7, "State");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "some/file.cpp:7: State\n");
    EXPECT_NE(ut_set_assert_handler(recording), recording);
    EXPECT_TRUE(reports().empty());
}

TEST(UtAssert, BuildsMessagesOfAnyLength)
{
    std::string const words(5000, 'x');
    EXPECT_EQ(ut_build_assert_varargs("%s!", words.c_str()).view(), words + "!");
    EXPECT_EQ(ut_build_assert_varargs("%s", ""), "");
}
