// mrtool thumb as a whole.
#include "program.h"

#include <gmock/gmock.h>

#include <filesystem>

namespace fs = std::filesystem;

using testing::HasSubstr;

namespace {

constexpr char square_obj[] = "v -1 -1 0\nv 1 -1 0\nv 1 1 0\nv -1 1 0\nf 1 2 3 4\n";

std::size_t files_in(std::string const& folder)
{
    return static_cast<std::size_t>(std::distance(fs::directory_iterator(folder), fs::directory_iterator()));
}

bool near(dgDuctImage const& image, int x, int y, giColour const& colour, int tolerance)
{
    short is[4];
    image.get_pixel(x, y, is);
    return std::abs(is[0] - colour.red()) <= tolerance && std::abs(is[1] - colour.green()) <= tolerance &&
           std::abs(is[2] - colour.blue()) <= tolerance;
}

} // namespace

TEST(mrtool_thumb, shows_each_kind)
{
    TestFolder const folder;
    write_material(folder.path("red.multimat"), {giColour(200, 30, 30, 0)});
    write_bytes(folder.path("square.obj"), square_obj);
    write_bytes(folder.path("photo.png"), png_bytes(*four_colours(64)));
    Outcome const made =
        run_mrtool("thumb " + folder.path("") + " -o " + folder.path("out") + " --size 64x48");
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.output + made.errors, "");
    EXPECT_EQ(files_in(folder.path("out")), 3u);

    auto const red = read_png(folder.path("out/red.multimat.png"));
    EXPECT_EQ(red->width(), 64);
    EXPECT_EQ(red->height(), 48);
    // Left of the middle, away from the highlight.
    EXPECT_TRUE(near(*red, 28, 30, giColour(200, 30, 30, 0), 12)) << pixel(*red, 28, 30);
    EXPECT_EQ(pixel(*red, 0, 0), "240 240 240");
    auto const square = read_png(folder.path("out/square.obj.png"));
    EXPECT_NE(pixel(*square, 32, 24), "240 240 240");
    auto const photo = read_png(folder.path("out/photo.png.png"));
    EXPECT_EQ(pixel(*photo, 12, 4), "255 0 0");
    EXPECT_EQ(pixel(*photo, 4, 4), "240 240 240");
}

TEST(mrtool_thumb, shows_a_texture_upright_and_not_mirrored)
{
    TestFolder const folder;
    write_material(folder.path("a.multimat"), {giColour(255, 255, 255, 0)}, {"picture"}, {"picture"});
    EXPECT_EQ(run_mrtool("thumb " + folder.path("a.multimat") + " --background 0000ff").status, 0);
    auto const thumb = read_png(folder.path("a.multimat.thumb.png"));
    EXPECT_EQ(thumb->width(), 256);
    EXPECT_EQ(pixel(*thumb, 0, 0), "0 0 255");
    // The layer tints red, green, blue and white with (255, 128, 0).
    auto const strongest = [&](int x, int y) {
        short is[4];
        thumb->get_pixel(x, y, is);
        return is[0] > 100 ? (is[1] > 50 ? "white" : "red") : is[1] > 50 ? "green" : "blue";
    };
    EXPECT_STREQ(strongest(80, 80), "red");
    EXPECT_STREQ(strongest(176, 80), "green");
    EXPECT_STREQ(strongest(80, 176), "blue");
    EXPECT_STREQ(strongest(176, 176), "white");
}

TEST(mrtool_thumb, sees_meshes_from_the_front_right_and_above)
{
    TestFolder const folder;
    // Blades from the middle upwards, to the right and to the front.
    auto const blades = [](char const* up, char const* right, char const* front) {
        std::string stl = "solid blades\n";
        for (char const* tip : {up, right, front})
            stl += std::string("facet normal 0 0 0\nouter loop\nvertex 0 0 0\nvertex .3 .3 .3\nvertex ") +
                   tip + "\nendloop\nendfacet\n";
        return stl + "endsolid blades\n";
    };
    struct
    {
        char const* file;
        char const* option;
        std::string stl;
    } const cases[] = {{"z.stl", "", blades("0 0 5", "5 0 0", "0 -5 0")},
                       {"y.stl", " --up y", blades("0 5 0", "5 0 0", "0 0 5")}};
    for (auto const& each : cases) {
        write_bytes(folder.path(each.file), each.stl);
        EXPECT_EQ(run_mrtool("thumb " + folder.path(each.file) + each.option).status, 0);
        auto const thumb = read_png(folder.path(each.file) + ".thumb.png");
        int top = 256, top_at = 0, left = 256, left_at = 0, right = -1, right_at = 0;
        for (int y = 0; y < 256; ++y)
            for (int x = 0; x < 256; ++x) {
                if (pixel(*thumb, x, y) == "240 240 240")
                    continue;
                if (y < top)
                    top = y, top_at = x;
                if (x < left)
                    left = x, left_at = y;
                if (x > right)
                    right = x, right_at = y;
            }
        // The blade to the front leads to the left, shortened more than the one to the right, and lowest.
        EXPECT_LT(top, right_at) << each.file;
        EXPECT_LT(right_at, left_at) << each.file;
        EXPECT_GT(right - top_at, top_at - left) << each.file;
        EXPECT_GT(top_at - left, 50) << each.file;
    }
}

TEST(mrtool_thumb, names_what_fails_and_goes_on)
{
    TestFolder const folder;
    write_material(folder.path("good.multimat"), {giColour(1, 2, 3, 0)}, {"weave"});
    write_bytes(folder.path("bad.multimat"), "<multimat>\n</multimat>\n");
    write_bytes(folder.path("bad.ply"), "ply\nformat ascii 1.0\nend_header\n");
    write_bytes(folder.path("bad.tiff"), "II*");
    write_bytes(folder.path("bad.png"), "\x89PNG\r\n\x1a\n");
    Outcome const made =
        run_mrtool("thumb " + folder.path("") + " " + folder.path("gone") + " -o " + folder.path("out"));
    EXPECT_EQ(made.status, 1);
    for (char const* said : {"bad.multimat: not a readable material file",
                             "bad.ply: not a readable mesh: ", "bad.tiff: not a readable image: ",
                             "bad.png: not a readable image: ", "gone: No such file or directory",
                             "good.multimat: warning: No such images: weave"})
        EXPECT_THAT(made.errors, HasSubstr(said));
    EXPECT_EQ(files_in(folder.path("out")), 1u);
}

TEST(mrtool_thumb, leaves_what_was_there_when_it_cannot_write)
{
    TestFolder const folder;
    std::string const input = folder.path("a.png"), output = folder.path("a.png.thumb.png");
    write_bytes(input, png_bytes(*four_colours(64)));
    write_bytes(output, "as it was");
    // A file that may not grow stands for a full disk.
    Outcome const full = run_mrtool("thumb " + input, "ulimit -f 1;");
    EXPECT_EQ(full.status, 1);
    EXPECT_THAT(full.errors, HasSubstr("a.png: " + output + " cannot be written: "));
    EXPECT_EQ(read_bytes(output), "as it was");
    EXPECT_EQ(files_in(folder.path("")), 2u);

    Outcome const no_folder = run_mrtool("thumb " + input + " -o " + input + "/sub/");
    EXPECT_EQ(no_folder.status, 1);
    EXPECT_THAT(no_folder.errors, HasSubstr("cannot be made: Not a directory"));
    EXPECT_EQ(run_mrtool("thumb " + input).status, 0);
    EXPECT_EQ(read_png(output)->width(), 256);
}

TEST(mrtool_thumb, says_why_there_is_no_renderer)
{
    TestFolder const folder;
    write_material(folder.path("a.multimat"), {giColour(1, 2, 3, 0)});
    // Hides every driver from the library that finds them.
    Outcome const refused =
        run_mrtool("thumb " + folder.path("a.multimat"), "__EGL_VENDOR_LIBRARY_DIRS=/none");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("mrtool: thumb: no renderer: "));
    EXPECT_EQ(files_in(folder.path("")), 1u);
}
