// What all subcommands share: usage, help, exit statuses.
#include "program.h"

#include <gmock/gmock.h>

using testing::AllOf;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

TEST(mrtool, refuses_wrong_usage)
{
    struct
    {
        char const* arguments;
        char const* said;
        char const* usage;
    } const cases[] = {
        {"", "subcommand is required", "Usage: mrtool [OPTIONS] SUBCOMMAND"},
        {"thumb", "INPUT is required", "Usage: mrtool thumb [OPTIONS] INPUT..."},
        {"thumb a.obj --size 0", "0 is not N or WxH, each 1 to ", "Usage: mrtool thumb"},
        {"thumb a.obj --size 9999", "9999 is not N or WxH", "Usage: mrtool thumb"},
        {"thumb a.obj --background 12345", "12345 is not RRGGBB", "Usage: mrtool thumb"},
        {"info -d", "no option -d; a file of that name goes behind --", "Usage: mrtool info"},
    };
    TestFolder const folder;
    std::string const there = "cd " + folder.path("") + " &&";
    for (auto const& each : cases) {
        Outcome const refused = run_mrtool(each.arguments, there);
        EXPECT_EQ(refused.status, 2) << each.arguments;
        EXPECT_EQ(refused.output, "");
        EXPECT_THAT(refused.errors,
                    AllOf(StartsWith("mrtool: "), HasSubstr(each.said), HasSubstr(each.usage)));
    }
}

TEST(mrtool, tells_its_version_and_what_contains_its_readers)
{
    EXPECT_THAT(run_mrtool("--version").output,
                testing::MatchesRegex("mrtool [0-9.]+\ncontained by: no new privileges, limits.*\n"));
}

// The parser of the command line has uses of its own for these.
TEST(mrtool, takes_names_of_any_form)
{
    TestFolder const folder;
    std::string const there = "cd " + folder.path("") + " &&";
    for (char const* name : {"[a,b]", "[]", "++", "{}", "info", "-d.multimat"})
        write_material(folder.path(name), {giColour(1, 2, 3, 0)});
    Outcome const told = run_mrtool("info '[a,b]' '[]' ++ {} info -- -d.multimat", there);
    EXPECT_EQ(told.status, 0) << told.errors;
    Outcome const made = run_mrtool("thumb info -o '[x]/.'", there);
    EXPECT_TRUE(std::filesystem::exists(folder.path("[x]/info.png"))) << made.errors;
}

TEST(mrtool, notices_when_standard_output_takes_nothing)
{
    for (char const* output : {"&-", "/dev/full"}) {
        Outcome const unheard = run_mrtool("--help", "", output);
        EXPECT_EQ(unheard.status, 1) << output;
        EXPECT_THAT(unheard.errors, StartsWith("mrtool: standard output: cannot be written"));
    }
}

TEST(mrtool, goes_on_where_a_file_takes_more_memory_than_there_is)
{
#if defined(__has_feature)
#if __has_feature(address_sanitizer)
    GTEST_SKIP() << "takes terabytes itself";
#endif
#endif
    TestFolder const folder;
    std::string black;
    for (int line = 0; line < 512'000; ++line)
        black += "rgb8 0 0 0\n";
    write_bytes(folder.path("many.pcp"), black);
    write_bytes(folder.path("red.pcp"), "rgb8 255 0 0\n");
    std::string const there = "cd " + folder.path("") + " && ulimit -d ";
    for (char const* kilobytes : {"20000;", "45000;"}) { // too few to read it; too few to tell of it
        Outcome const told = run_mrtool("info many.pcp red.pcp", there + kilobytes);
        EXPECT_EQ(told.status, 1);
        EXPECT_THAT(told.errors, AllOf(StartsWith("mrtool: many.pcp:"), EndsWith(": not enough memory\n")));
        EXPECT_THAT(told.output, HasSubstr("255 0 0, rgb8 255 0 0"));
    }
}
