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
        {"thumb a.obj --size 0", "0 is not N or WxH, each 1 to 8192 pixels", "Usage: mrtool thumb"},
        {"thumb a.obj --size 64x", "64x is not N or WxH", "Usage: mrtool thumb"},
        {"thumb a.obj --size 8193", "8193 is not N or WxH", "Usage: mrtool thumb"},
        {"thumb a.obj --size 64x64x64", "64x64x64 is not", "Usage: mrtool thumb"},
        {"thumb a.obj --up x", "--up", "Usage: mrtool thumb"},
        {"thumb a.obj --background reddish", "reddish is not RRGGBB", "Usage: mrtool thumb"},
        {"thumb a.obj --background 12345", "12345 is not RRGGBB", "Usage: mrtool thumb"},
        {"thumb a.obj --paint", "--paint", "Usage: mrtool thumb"},
        {"import a.obj", "--output is required", "Usage: mrtool import [OPTIONS] SCENE..."},
        {"info --json", "FILE is required", "Usage: mrtool info [OPTIONS] FILE..."},
    };
    for (auto const& each : cases) {
        Outcome const refused = run_mrtool(each.arguments);
        EXPECT_EQ(refused.status, 2) << each.arguments;
        EXPECT_EQ(refused.output, "");
        EXPECT_THAT(refused.errors,
                    AllOf(StartsWith("mrtool: "), HasSubstr(each.said), HasSubstr(each.usage)));
    }
}

TEST(mrtool, writes_nothing_where_outputs_collide)
{
    TestFolder const folder;
    std::filesystem::create_directory(folder.path("sub"));
    write_material(folder.path("a.multimat"), {giColour(1, 2, 3, 0)});
    write_material(folder.path("sub/a.multimat"), {giColour(1, 2, 3, 0)});
    Outcome const refused = run_mrtool("thumb " + folder.path("a.multimat") + " " +
                                       folder.path("sub/a.multimat") + " -o " + folder.path("out"));
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.errors, AllOf(HasSubstr("would both be"), HasSubstr("Usage: mrtool thumb")));
    EXPECT_FALSE(std::filesystem::exists(folder.path("out")));
}

TEST(mrtool, helps)
{
    EXPECT_THAT(run_mrtool("--version").output, StartsWith("mrtool "));
    EXPECT_THAT(run_mrtool("--help").output,
                AllOf(HasSubstr("thumb"), HasSubstr("import"), HasSubstr("info")));
    for (char const* subcommand : {"thumb", "import", "info"}) {
        Outcome const help = run_mrtool(std::string(subcommand) + " --help");
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.output, HasSubstr(std::string("Example: mrtool ") + subcommand));
    }
}
