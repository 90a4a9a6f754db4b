// What all subcommands share: usage, help, exit statuses.
#include "program.h"

#include <gmock/gmock.h>

using testing::AllOf;
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
        {"thumb a.obj --size 64x", "64x is not N or WxH", "Usage: mrtool thumb"},
        {"thumb a.obj --size 9999", "9999 is not N or WxH", "Usage: mrtool thumb"},
        {"thumb a.obj --size 64x64x64", "64x64x64 is not", "Usage: mrtool thumb"},
        {"thumb a.obj --up x", "--up", "Usage: mrtool thumb"},
        {"thumb a.obj --background reddish", "reddish is not RRGGBB", "Usage: mrtool thumb"},
        {"thumb a.obj --background 12345", "12345 is not RRGGBB", "Usage: mrtool thumb"},
        {"thumb a.obj --paint", "--paint", "Usage: mrtool thumb"},
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

TEST(mrtool, helps)
{
    EXPECT_THAT(run_mrtool("--version").output, StartsWith("mrtool "));
    Outcome const help = run_mrtool("thumb --help");
    EXPECT_EQ(help.status, 0);
    EXPECT_THAT(help.output, AllOf(HasSubstr("INPUT ..."), HasSubstr("Example: mrtool thumb")));
}
