// mrtool thumb as a whole.
#include "program.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <filesystem>
#include <span>
#include <sstream>

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::Not;

namespace {

using Point = std::array<float, 3>;

/// Blades from the middle upwards, to the right and to the front.
std::string stl_blades(std::span<Point const> tips)
{
    std::ostringstream stl("solid blades\n", std::ios::ate);
    for (auto const& [x, y, z] : tips)
        stl << "facet normal 0 0 0\nouter loop\nvertex 0 0 0\nvertex .3 .3 .3\nvertex " << x << ' ' << y
            << ' ' << z << "\nendloop\nendfacet\n";
    return stl.str() + "endsolid blades\n";
}

} // namespace

TEST(mrtool_thumb, sees_meshes_from_the_front_right_and_above)
{
    TestFolder const folder;
    Point const z_up[] = {{0, 0, 5}, {5, 0, 0}, {0, -5, 0}};
    Point const y_up[] = {{0, 5, 0}, {5, 0, 0}, {0, 0, 5}};
    for (std::string const name : {"z.stl", "y.stl"}) {
        SCOPED_TRACE(name);
        bool const as_y = name.starts_with("y");
        write_bytes(folder.path(name), stl_blades(as_y ? y_up : z_up));
        EXPECT_EQ(run_mrtool("thumb " + folder.path(name) + (as_y ? " --up y" : "")).status, 0);
        auto const thumb = read_png(folder.path(name) + ".thumb.png");
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
        EXPECT_LT(top, right_at);
        EXPECT_LT(right_at, left_at);
        EXPECT_GT(right - top_at, top_at - left);
        EXPECT_GT(top_at - left, 50);
    }
}

TEST(mrtool_thumb, names_what_fails_and_goes_on)
{
    TestFolder const folder;
    write_material(folder.path("good.multimat"), {giColour(1, 2, 3, 0)}, {"weave"});
    write_material(folder.path("empty.multimat"), {});
    write_bytes(folder.path("bad.multimat"), "<multimat>\n</multimat>\n");
    write_bytes(folder.path("bad.ply"), "ply\nformat ascii 1.0\nend_header\n");
    write_bytes(folder.path("bad.tiff"), "II*");
    Point const on_the_line[] = {{1, 1, 1}};
    write_bytes(folder.path("line.stl"), stl_blades(on_the_line));
    Outcome const made =
        run_mrtool("thumb " + folder.path("") + " " + folder.path("gone") + " -o " + folder.path("out"));
    EXPECT_EQ(made.status, 1);
    for (char const* said :
         {"bad.multimat: bad content: \"image_encapsulation_type\" is missing",
          "bad.ply: not a readable mesh: ", "bad.tiff: not a readable image: ",
          "gone: No such file or directory", "good.multimat: warning: facet 1: there is no image \"weave\"\n",
          "empty.multimat: warning: there are no facets, so the picture is empty\n",
          "line.stl: warning: no triangle has an area, so the picture is empty\n"})
        EXPECT_THAT(made.errors, HasSubstr(said));
    // The library's own report of it is dropped.
    EXPECT_EQ(std::count(made.errors.begin(), made.errors.end(), '\n'), 7) << made.errors;
    EXPECT_EQ(files_in(folder.path("out")), 3);
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
    EXPECT_EQ(files_in(folder.path("")), 2);

    EXPECT_EQ(run_mrtool("thumb " + input + " --size 64x48 --background 0000ff").status, 0);
    EXPECT_EQ(read_png(output)->width(), 64);
    EXPECT_EQ(read_png(output)->height(), 48);
    EXPECT_EQ(pixel(*read_png(output), 12, 4), "255 0 0");
    EXPECT_EQ(pixel(*read_png(output), 4, 4), "0 0 255");
    EXPECT_EQ(run_mrtool("thumb " + input + " --size 64x48 --background 0000ff -o -").output,
              read_bytes(output));
}

TEST(mrtool_thumb, draws_images_without_a_renderer)
{
    TestFolder const folder;
    write_material(folder.path("a.multimat"), {giColour(1, 2, 3, 0)});
    write_bytes(folder.path("b.png"), png_bytes(*four_colours()));
    // Hides every driver from the library that finds them.
    Outcome const outcome = run_mrtool("thumb " + folder.path(""), "__EGL_VENDOR_LIBRARY_DIRS=/none");
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.errors, HasSubstr("a.multimat: no renderer: "));
    EXPECT_THAT(outcome.errors, Not(HasSubstr("b.png")));
    EXPECT_EQ(files_in(folder.path("")), 3);
}
