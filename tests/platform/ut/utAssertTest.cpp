#include "utAssert.h"

#include "mrTest.h"

TEST(utAssert, ReportsWhatIsRequiredWithTheFileFromTheRoot)
{
    std::string const words(5000, 'x');
    UT_REQUIRE(1 + 1 == 2, "fine");
    UT_REQUIRE(1 + 1 == 3, "Args");
    ut_report_assert_failure("some/file", 7, ut_build_assert_varargs("%d %s!", 2, words.c_str()));
    EXPECT_EQ(reports(), (std::vector<std::string>{"tests/platform/ut/utAssertTest.cpp: Args",
                                                   "some/file: 2 " + words + "!"}));
}

TEST(utAssert, WritesToStandardErrorByDefault)
{
    utAssertHandler const recording = ut_set_assert_handler(nullptr);
    testing::internal::CaptureStderr();
    ut_report_assert_failure("some/file.cpp", 7, "State");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "some/file.cpp:7: State\n");
    EXPECT_NE(ut_set_assert_handler(recording), recording);
}
