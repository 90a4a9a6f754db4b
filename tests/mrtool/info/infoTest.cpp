// mrtool info as a whole.
#include "program.h"

#include "mrImageCache.h"

#include <gmock/gmock.h>
#include <nlohmann/json.hpp>

using testing::HasSubstr;
using testing::StartsWith;

TEST(mrtool_info, tells_all_values)
{
    TestFolder const folder;
    write_material(folder.path("a.multimat"), {giColour(200, 30, 30, 0)}, {"oak", "gone"}, {"oak", "spare"});
    Outcome const told = run_mrtool("info " + folder.path("a.multimat"));
    EXPECT_EQ(told.status, 0);
    EXPECT_EQ(told.errors, "");
    EXPECT_EQ(told.output, folder.path("a.multimat") + R"(
  encapsulation           embedded_png
  property "supplier"     "Müller" (string)
  property "price"        0.1 (double)
  facet 1
    name                  "paint"
    affinity              3
    diffuse colour        200 30 30
    polish                0.5
    reflect               0.25
    transparency          0.125
    emission              0
    refractive index      1.5
    shader definition     none
    layer 1               "oak", colour, 8 x 8, tinted towards 255 128 0
    layer 2               "gone", colour, no such image, tinted towards 255 128 0
  image "oak"             8 x 8, named "four colours"
  image "spare"           8 x 8, named "four colours"
  warning: facet 1, layer 2: there is no image "gone"
  warning: no layer uses the image "spare"
)");
}

TEST(mrtool_info, tells_it_in_json)
{
    TestFolder const folder;
    write_material(folder.path("a.multimat"), {giColour(200, 30, 30, 0)}, {"oak", "gone"}, {"oak"});
    Outcome const told =
        run_mrtool("info --json " + folder.path("a.multimat") + " " + folder.path("b.multimat"));
    EXPECT_EQ(told.status, 1);
    auto const files = nlohmann::json::parse(told.output).at("files");
    ASSERT_EQ(files.size(), 2u);
    auto const& file = files[0];
    EXPECT_EQ(file["path"], folder.path("a.multimat"));
    EXPECT_EQ(file["kind"], "material");
    EXPECT_EQ(file["status"], "ok");
    EXPECT_EQ(file["properties"][0],
              (nlohmann::json{{"name", "supplier"}, {"type", "string"}, {"value", "Müller"}}));
    auto const& plain = file["facets"][0]["plain_material"];
    EXPECT_EQ(plain["diffuse_colour"], (nlohmann::json{200, 30, 30}));
    EXPECT_TRUE(plain["shader_definition"].is_null());
    auto const& layers = file["facets"][0]["textures"];
    EXPECT_EQ(layers[0]["image"], (nlohmann::json{{"width", 8}, {"height", 8}}));
    EXPECT_TRUE(layers[1]["image"].is_null());
    EXPECT_EQ(file["warnings"], nlohmann::json{"facet 1, layer 2: there is no image \"gone\""});
    EXPECT_EQ(files[1]["status"], "open_failed");
    EXPECT_EQ(files[1]["fault"], "No such file or directory");
}

TEST(mrtool_info, warns_of_what_is_left_out)
{
    TestFolder const folder;
    write_material(folder.path("good"), {giColour(1, 2, 3, 0)}, {"oak"}, {"oak"});
    std::string const good = read_bytes(folder.path("good"));
    std::string const image = good.substr(good.find("\x89PNG"));
    auto const warnings = [&](std::string const& bytes) {
        write_bytes(folder.path("a"), bytes);
        std::string const told = run_mrtool("info " + folder.path("a")).output;
        return told.substr(std::min(told.find("  warning"), told.size()));
    };
    EXPECT_EQ(warnings(good), "");
    EXPECT_EQ(warnings(good + png_bytes(*four_colours()) + image + "rest"),
              R"(  warning: image 2 has no title and is left out
  warning: image 3 takes the place of an earlier one with the title "oak"
  warning: the last 4 bytes of the file are no image and are left out
)");
    std::string denied = good;
    denied.replace(denied.find("embedded_png"), 12, "none");
    EXPECT_THAT(warnings(denied), HasSubstr("warning: images follow a document that says there are none"));
    // The line is the file's own.
    write_bytes(folder.path("a"), "one\ntwo\n<multimat>\n<a>\n</b></multimat>\n");
    EXPECT_THAT(run_mrtool("info " + folder.path("a")).errors, HasSubstr("a: bad content: line 5, "));
}

TEST(mrtool_info, tells_of_palettes)
{
    TestFolder const folder;
    std::string const good = folder.path("a"), bad = folder.path("b.pcp");
    write_bytes(good, "cmyk 0 0 0 100 M\xfcller\"\\\x01 # dark\ncmy8 0 255 255\n");
    write_bytes(bad, "rgb8 1 2 3\n\nrgb8 1 2 256\n");
    std::string const files = good + " " + bad;

    Outcome const told = run_mrtool("info " + files);
    EXPECT_EQ(told.status, 1);
    EXPECT_EQ(told.output, good + R"(
  colour 0                0 0 0, cmyk 0 0 0 100, "Müller\"\\\x01"
  colour 1                255 0 0, cmy8 0 255 255
)");
    EXPECT_THAT(told.errors, StartsWith("mrtool: " + bad + ":3: a number is out of its range"));

    auto const json = nlohmann::json::parse(run_mrtool("info --json " + files).output).at("files");
    EXPECT_EQ(json[0]["kind"], "palette");
    EXPECT_EQ(json[0]["colours"][0], (nlohmann::json{{"index", 0},
                                                     {"rgb", {0, 0, 0}},
                                                     {"encoding", "cmyk"},
                                                     {"components", {0, 0, 0, 100}},
                                                     {"name", "Müller\"\\\x01"}}));
    EXPECT_EQ(json[1]["status"], "bad_content");
    EXPECT_EQ(json[1]["line"], 3);
    write_bytes(bad, "# nothing\n");
    EXPECT_THAT(run_mrtool("info " + bad).errors, HasSubstr("b.pcp: bad content: it holds no colour"));
}

TEST(mrtool_info, tells_of_image_caches)
{
    TestFolder const folder;
    std::string const path = folder.path("a");
    auto const picture = four_colours();
    mrImageCache cache(20, 5);
    cache.add_image(3'000'000'000, picture.get());
    ASSERT_TRUE(cache.write(utString(path)));
    std::string const written = read_bytes(path);
    write_bytes(path, "20 5\n-1294967296 560232000\n\n" + written.substr(written.find('\x89')));

    // Ages count in the standard time of a place; its time in summer is an hour ahead.
    std::string const in_new_york = "export TZ=EST5EDT,M3.2.0,M11.1.0;";
    EXPECT_EQ(run_mrtool("info " + path, in_new_york).output, path + R"(
  size limit              20
  shrinkage               5
  entry -1294967296       b2d05e00, used 2026-10-03 05:00:00, 8 x 8, named "four colours"
)");
    // South of the equator the time in summer is that of the new year, from which ages count.
    EXPECT_THAT(run_mrtool("info " + path, "export TZ=WEST5EAST,M10.1.0,M4.1.0;").output,
                HasSubstr("used 2026-10-03 04:00:00"));
    auto const json =
        nlohmann::json::parse(run_mrtool("info --json " + path, in_new_york).output)["files"][0];
    EXPECT_EQ(json["kind"], "image_cache");
    EXPECT_EQ(json["entries"][0], (nlohmann::json{{"hash", -1294967296},
                                                  {"age", 560232000},
                                                  {"last_used", "2026-10-03 05:00:00"},
                                                  {"image_name", "four colours"},
                                                  {"width", 8},
                                                  {"height", 8}}));
}
