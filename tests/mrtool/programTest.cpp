// What all subcommands share: usage, help, exit statuses.
#include "program.h"

#include "text.h"

#include <gmock/gmock.h>

using mrtool::text;
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
        {"paint a.obj", "no subcommand or option paint", "Usage: mrtool [OPTIONS] SUBCOMMAND"},
        {"thumb", "INPUT is required", "Usage: mrtool thumb [OPTIONS] INPUT..."},
        {"thumb a.obj --size 0", "0 is not N or WxH, each 1 to ", "Usage: mrtool thumb"},
        {"thumb a.obj --size 9999", "9999 is not N or WxH", "Usage: mrtool thumb"},
        {"thumb a.obj --size 64x64x64", "64x64x64 is not", "Usage: mrtool thumb"},
        {"thumb a.obj --up x", "--up", "Usage: mrtool thumb"},
        {"thumb a.obj --background 12345", "12345 is not RRGGBB", "Usage: mrtool thumb"},
        {"thumb a.multimat -o a.multimat", "would replace the input", "Usage: mrtool thumb"},
        {"import a.obj", "--output is required", "Usage: mrtool import [OPTIONS] SCENE..."},
        {"import a.obj -o ''", "--output: the name is empty", "Usage: mrtool import"},
        {"info --json", "FILE is required", "Usage: mrtool info [OPTIONS] FILE..."},
        {"info -d", "no option -d; a file of that name goes behind --", "Usage: mrtool info"},
    };
    TestFolder const folder;
    std::string const there = "cd " + folder.path("") + " &&";
    write_material(folder.path("a.multimat"), {giColour(1, 2, 3, 0)});
    for (auto const& each : cases) {
        Outcome const refused = run_mrtool(each.arguments, there);
        EXPECT_EQ(refused.status, 2) << each.arguments;
        EXPECT_EQ(refused.output, "");
        EXPECT_THAT(refused.errors,
                    AllOf(StartsWith("mrtool: "), HasSubstr(each.said), HasSubstr(each.usage)));
    }
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
    for (int line = 0; line < 8'000; ++line)
        black += "rgb8 0 0 0\n";
    write_bytes(folder.path("few.pcp"), black);
    for (int doubled = 0; doubled < 6; ++doubled)
        black += black;
    write_bytes(folder.path("many.pcp"), black);
    write_bytes(folder.path("red.pcp"), "rgb8 255 0 0\n");
    std::string fews;
    for (int file = 0; file < 20; ++file)
        fews += " few.pcp";
    struct
    {
        std::string arguments;
        int kilobytes;
        char const* said;
        char const* told;
    } const cases[] = {
        {"info many.pcp red.pcp", 20'000, "many.pcp:", "255 0 0, rgb8 255 0 0"},
        {"palette many.pcp red.pcp -o a.png", 20'000, "many.pcp:", ""},
        {"info many.pcp red.pcp", 45'000, "many.pcp: ", "255 0 0, rgb8 255 0 0"},
        {"info --json many.pcp red.pcp", 45'000, "many.pcp: ", "\"rgb\": [255, 0, 0]"},
        {"palette" + fews + " -o none.png", 10'000, "none.png: ", ""},
    };
    for (auto const& each : cases) {
        SCOPED_TRACE(each.arguments + text(" in ", each.kilobytes));
        Outcome const told =
            run_mrtool(each.arguments, text("cd ", folder.path(""), " && ulimit -d ", each.kilobytes, ";"));
        EXPECT_EQ(told.status, 1);
        EXPECT_THAT(told.errors, AllOf(StartsWith("mrtool: " + std::string(each.said)),
                                       EndsWith(": not enough memory\n")));
        EXPECT_THAT(told.output, HasSubstr(each.told));
    }
    EXPECT_TRUE(std::filesystem::exists(folder.path("a.png")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("none.png")));
}

TEST(mrtool, helps)
{
    EXPECT_THAT(run_mrtool("--version").output, StartsWith("mrtool "));
    Outcome const help = run_mrtool("thumb --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, AllOf(HasSubstr("INPUT ..."), HasSubstr("Example: mrtool thumb")));
}
