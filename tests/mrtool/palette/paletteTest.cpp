// mrtool palette as a whole.
#include "program.h"

#include "palettePicture.h"

#include "mrColourPalette.h"
#include "mrUtils.h"

#include <gmock/gmock.h>

#include <sys/stat.h>

namespace fs = std::filesystem;

using testing::AllOf;
using testing::HasSubstr;
using testing::StartsWith;

static std::string const three = "rgb8 255 0 0 Red\ncmy8 255 0 255 Green\ncmyk 100 100 0 0 Blue\n";

TEST(mrtool_palette, draws_swatches_in_order)
{
    TestFolder const folder;
    std::string const there = "cd " + folder.path("") + " &&";
    std::string lines;
    for (int colour = 1; colour <= 17; ++colour)
        lines += "rgb8 " + std::to_string(colour) + " 2 3\n";
    write_bytes(folder.path("a.pcp"), three);
    write_bytes(folder.path("b.pcp"), lines);
    write_bytes(folder.path("bad.pcp"), three + "rgb8 4 5 6 Red\n");
    write_bytes(folder.path("cut.pcp"), "rgb8 7 8 9\n" + std::string(2000, '#') + "\nrgb8 1 1 1\n");
    Outcome const drawn = run_mrtool("palette a.pcp bad.pcp gone.pcp b.pcp cut.pcp -o out/a.png", there);
    EXPECT_EQ(drawn.status, 1);
    EXPECT_EQ(drawn.errors,
              "mrtool: bad.pcp:4: an earlier line has the name \"Red\" already\n"
              "mrtool: gone.pcp: cannot be opened: No such file or directory\n"
              "mrtool: cut.pcp:2: warning: longer than 1,023 characters; it and the lines after it "
              "are not read\n");
    auto const picture = read_png(folder.path("out/a.png"));
    EXPECT_EQ(picture->width(), 8 * 72 + 8);
    EXPECT_EQ(picture->height(), 5 * 72 + 8 + 2 * 16);
    struct
    {
        int x, y;
        char const* colour;
    } const pixels[] = {
        {0, 0, "240 240 240"},   {8, 8, "255 0 0"},        {71, 71, "255 0 0"}, {80, 8, "0 255 0"},
        {152, 8, "0 0 255"},     {8, 96, "1 2 3"},         {512, 96, "8 2 3"},  {8, 240, "17 2 3"},
        {8, 239, "200 200 200"}, {80, 240, "240 240 240"}, {8, 328, "7 8 9"},
    };
    for (auto const& each : pixels)
        EXPECT_EQ(pixel(*picture, each.x, each.y), each.colour) << each.x << " " << each.y;

    // A failure names the picture, once.
    EXPECT_THAT(run_mrtool("palette b.pcp b.pcp b.pcp -o full.png", there + "ulimit -f 1;").errors,
                StartsWith("mrtool: palette: full.png cannot be written: "));
}

TEST(mrtool_palette, finds_room_for_very_many_colours)
{
    auto const fullest = mrtool::find_layout({8191u * 8191u});
    ASSERT_TRUE(fullest);
    EXPECT_EQ(std::pair(fullest->width, fullest->height), std::pair(8191, 8191));
    EXPECT_EQ(mrtool::find_layout({100'000})->swatch, 5);
    EXPECT_FALSE(mrtool::find_layout({8191u * 8191u + 1}));
    EXPECT_FALSE(mrtool::find_layout(std::vector<std::size_t>(8192, 1)));
}

TEST(mrtool_palette, converts_and_says_what_it_changes)
{
    TestFolder const folder;
    std::string const there = "cd " + folder.path("") + " &&";
    write_bytes(folder.path("a.gpl"), "GIMP Palette\nName: Shop\n1 2 3\tGrey #1\n4 5 6\tGrey 1\n");
    Outcome const made = run_mrtool("palette --from a.gpl -o a.pcp", there);
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.errors,
              "mrtool: a.gpl: not carried over, a palette file has no place for it: 1 header line (\"Name: "
              "Shop\")\n"
              "mrtool: a.gpl: without the \"#\" that would begin a comment: 1 name (\"Grey #1\" becomes "
              "\"Grey 1\")\n"
              "mrtool: a.gpl: numbered, since an earlier colour has the name: 1 name (\"Grey 1\" becomes "
              "\"Grey 1 (2)\")\n");
    EXPECT_EQ(read_bytes(folder.path("a.pcp")), "rgb8 1 2 3 Grey 1\nrgb8 4 5 6 Grey 1 (2)\n");

    write_bytes(folder.path("a.pcp"), three);
    Outcome const refused = run_mrtool("palette --from a.gpl -o a.pcp", there);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.errors, "mrtool: a.gpl: a.pcp is there already; --force replaces it\n");
    EXPECT_EQ(read_bytes(folder.path("a.pcp")), three);
    EXPECT_EQ(run_mrtool("palette --from a.gpl -o a.pcp --force", there).status, 0);
    EXPECT_THAT(read_bytes(folder.path("a.pcp")), StartsWith("rgb8 1 2 3 Grey 1\n"));

    EXPECT_EQ(run_mrtool("palette --from a.gpl -o -", there).output, read_bytes(folder.path("a.pcp")));
    Outcome const unheard = run_mrtool("palette a.pcp -o -", there, "/dev/full");
    EXPECT_EQ(unheard.errors,
              "mrtool: palette: standard output cannot be written: No space left on device\n");
    EXPECT_EQ(unheard.status, 1);

    EXPECT_EQ(run_mrtool("palette --from a.gpl -o full.pcp", there + "ulimit -f 0;").status, 1);
    EXPECT_EQ(files_in(folder.path("")), 2);
}

TEST(mrtool_palette, refuses_wrong_usage_before_it_writes)
{
    TestFolder const folder;
    std::string const there = "cd " + folder.path("") + " &&";
    write_bytes(folder.path("a.pcp"), three);
    write_bytes(folder.path("a.gpl"), "GIMP Palette\n1 2 3\n");
    fs::create_symlink("a.pcp", folder.path("link"));
    // A fault in the program may replace this one; /dev/null would be lost to the whole machine.
    ASSERT_EQ(mkfifo(folder.path("real pipe").c_str(), 0600), 0);
    fs::create_symlink("real pipe", folder.path("pipe"));
    struct
    {
        char const* arguments;
        char const* said;
    } const cases[] = {
        {"a.pcp", "--output is required"},
        {"-o a.png", "FILE is required, or --from"},
        {"a.pcp -o link", "link would replace the input a.pcp"},
        {"a.pcp -o b.PCP", "b.PCP is a palette file by its name"},
        {"a.pcp -o pipe", "would replace pipe, which is no file"},
        {"--from a.gpl a.pcp -o b.pcp", "--from takes one file, and a.pcp is a second"},
        {"--from a.gpl -o a.png", "a.png is a picture by its name"},
        {"--from a.gpl -o a.gpl --force", "a.gpl would replace the input a.gpl"},
        {"--from - -o a.gpl --force <a.gpl", "a.gpl would replace the input -"},
    };
    for (auto const& each : cases) {
        Outcome const refused = run_mrtool(std::string("palette ") + each.arguments, there);
        EXPECT_EQ(refused.status, 2) << each.arguments;
        EXPECT_THAT(refused.errors, AllOf(StartsWith("mrtool: "), HasSubstr(each.said),
                                          HasSubstr("Usage: mrtool palette [OPTIONS] [FILE...]")));
    }
    EXPECT_EQ(read_bytes(folder.path("a.pcp")), three);
    // With nothing to draw, nothing is written either.
    EXPECT_EQ(run_mrtool("palette a.gpl -o a.png", there).status, 1);
    EXPECT_FALSE(fs::exists(folder.path("a.png")));
}
