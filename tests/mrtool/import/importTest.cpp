// mrtool import as a whole.
#include "program.h"

#include "mrFileMat.h"
#include "mrFMFacet.h"
#include "mrFMPlainMat.h"
#include "mrFMTexture.h"
#include "mrMatProp.h"

#include <gmock/gmock.h>

#include <filesystem>
#include <stdexcept>

namespace fs = std::filesystem;

using testing::HasSubstr;
using testing::Not;

namespace {

mrFMFacet const& only_facet(mrFileMat& material, std::string const& path)
{
    if (material.read(utString(path)) != mrFileMatReadOK || material.facets().size() != 1)
        throw std::runtime_error(path);
    return **material.facets().begin();
}

std::string property(mrFileMat const& material, char const* name)
{
    for (mrMatProp const& each : material.file_props())
        if (each.name() == name)
            return each.string_value().c_str();
    return "";
}

/// Imports one scene of the folder into "out" below it.
Outcome import(TestFolder const& folder, std::string const& scene, std::string const& options = {})
{
    return run_mrtool("import " + folder.path(scene) + " -o " + folder.path("out") + options);
}

void expect_said(Outcome const& made, std::vector<std::string> const& texts)
{
    for (std::string const& text : texts)
        EXPECT_THAT(made.errors, HasSubstr(text));
}

std::string little_endian(std::size_t value)
{
    return {static_cast<char>(value), static_cast<char>(value >> 8), static_cast<char>(value >> 16),
            static_cast<char>(value >> 24)};
}

/// A GLB file with an image in it, materials in JSON, and a triangle of the first one.
void write_glb(std::string const& path, std::string const& materials)
{
    std::string const image = png_bytes(*four_colours());
    std::string data(36, '\0');
    std::string json =
        R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0]}],"nodes":[{"mesh":0}],
        "meshes":[{"primitives":[{"attributes":{"POSITION":0},"material":0}]}],
        "accessors":[{"bufferView":0,"componentType":5126,"count":3,"type":"VEC3","min":[0,0,0],"max":[1,1,0]}],
        "images":[{"bufferView":1,"mimeType":"image/png","name":"oak"}],"textures":[{"source":0}],"materials":)" +
        materials +
        R"(,"bufferViews":[{"buffer":0,"byteLength":36},{"buffer":0,"byteOffset":36,"byteLength":)" +
        std::to_string(image.size()) + R"(}],"buffers":[{"byteLength":)" + std::to_string(36 + image.size()) +
        "}]}";
    data += image;
    data.resize((data.size() + 3) / 4 * 4);
    json.resize((json.size() + 3) / 4 * 4, ' ');
    auto const length = [](std::string const& text) { return little_endian(text.size()); };
    write_bytes(path, "glTF" + little_endian(2) + little_endian(28 + json.size() + data.size()) +
                          length(json) + "JSON" + json + length(data) + std::string("BIN\0", 4) + data);
}

} // namespace

TEST(mrtool_import, brings_over_an_obj_scene)
{
    TestFolder const folder;
    write_bytes(folder.path("room.obj"),
                "mtllib room.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nvt 0 0\nvt 1 0\nvt 0 1\n"
                "usemtl oak/1\nf 1/1 2/2 3/3\nusemtl glass\nf 1 2 3\n");
    write_bytes(folder.path("room.mtl"),
                "newmtl oak/1\nKd 0.8 0.6 0.2\nKa 0.1 0.1 0.1\nNs 250\nd 0.75\nNi 1.45\nKe 0.5 0.5 0.5\n"
                "map_Kd textures\\my oak.png\nmap_Bump bumps.png\n"
                "newmtl glass\nKd 1 1 1\nd 0.25\nPr 0.3\nPm 0.7\nmap_Kd gone.png\n");
    fs::create_directory(folder.path("textures"));
    write_bytes(folder.path("textures/my oak.png"), png_bytes(*four_colours()));
    Outcome const made = import(folder, "room.obj");

    mrFileMat oak;
    mrFMFacet const& facet = only_facet(oak, folder.path("out/oak_1.multimat"));
    mrFMPlainMat const& plain = facet.plain_mat();
    EXPECT_EQ(plain.name(), "oak/1");
    EXPECT_EQ(plain.diffuse_colour(), giColour(204, 153, 51, 0));
    EXPECT_EQ(plain.transparency(), 0.25);
    EXPECT_EQ(plain.polish(), 0.5);
    EXPECT_EQ(plain.refractive_index(), 1.45);
    EXPECT_EQ(plain.emission(), 0.5);
    EXPECT_EQ(property(oak, "scene"), "room.obj");
    EXPECT_EQ(property(oak, "material"), "oak/1");
    ASSERT_EQ(facet.textures().size(), 1u);
    EXPECT_EQ(facet.textures().begin()->image_name(), "my oak.png");
    ASSERT_TRUE(oak.images().member("my oak.png"));
    EXPECT_TRUE(four_colours()->equal(oak.images().read("my oak.png")));
    // The missing texture is said and makes the run a failed one; the rest is there.
    EXPECT_EQ(made.status, 1);
    expect_said(made,
                {"room.obj: material \"oak/1\": not carried over, a material file has no place for it: "
                 "the ambient colour, the bump map \"bumps.png\"\n",
                 "material \"glass\": written without its texture \"gone.png\": there is no such file"});
    mrFileMat glass;
    mrFMFacet const& pane = only_facet(glass, folder.path("out/glass.multimat"));
    EXPECT_EQ(pane.plain_mat().polish(), 0.7);
    EXPECT_EQ(pane.plain_mat().reflect(), 0.7);
    EXPECT_TRUE(pane.textures().empty());
}

TEST(mrtool_import, brings_over_a_glb_scene)
{
    TestFolder const folder;
    // No surface has any but the first.
    write_glb(folder.path("a.glb"),
              R"([{"name":"../up","pbrMetallicRoughness":{"baseColorFactor":[0.8,0.4,0.2,0.5],
        "metallicFactor":0.25,"roughnessFactor":0.75,"baseColorTexture":{"index":0}},"normalTexture":{"index":0},
        "emissiveFactor":[0,0.5,0],"alphaMode":"BLEND"},
        {"name":"../up","alphaMode":"MASK","pbrMetallicRoughness":{"baseColorFactor":[1,1,1,0.4],
        "baseColorTexture":{"index":0,"texCoord":1,"extensions":{"KHR_texture_transform":{"scale":[2,2]}}}}},
        {"pbrMetallicRoughness":{"baseColorFactor":[0.216,0.5,0,0.5]},"extras":{"shop":7},
        "emissiveFactor":[0.25,0.25,0.25],"extensions":{"KHR_materials_iridescence":{},
        "KHR_materials_clearcoat":{"clearcoatFactor":1},
        "KHR_materials_ior":{"ior":1.4},"KHR_materials_emissive_strength":{"emissiveStrength":2}}}])");
    Outcome const made = import(folder, "a.glb");
    EXPECT_EQ(made.status, 0) << made.errors;
    std::string const no_place = "\": not carried over, a material file has no place for it: ";
    expect_said(made, {"the normal map", "the emitted colour (0 0.5 0) becomes an emission of 0.735",
                       "up" + no_place +
                           "the texture's choice of a further set of coordinates, the texture's scale, "
                           "shift or turn, the cutting away of what is less opaque than 0.5 (alphaMode "
                           "MASK)\n",
                       "its opacity of 0.5 counts for nothing, as its alphaMode is OPAQUE",
                       "3" + no_place +
                           "the clear coat (KHR_materials_clearcoat), the extension "
                           "KHR_materials_iridescence, the extras\n"});
    mrFileMat first, second, third;
    mrFMFacet const& facet = only_facet(first, folder.path("out/_._up.multimat"));
    // The texture takes the factor.
    EXPECT_EQ(facet.plain_mat().diffuse_colour(), giColour(255, 255, 255, 0));
    EXPECT_EQ(facet.plain_mat().transparency(), 0.5);
    EXPECT_EQ(facet.plain_mat().polish(), 0.25);
    ASSERT_EQ(facet.textures().size(), 1u);
    mrFMTexture const& layer = *facet.textures().begin();
    EXPECT_TRUE(first.images().member(layer.image_name()));
    EXPECT_EQ(layer.recoloured(), 1);
    EXPECT_EQ(layer.recolour(), giColour(231, 170, 124, 0));
    mrFMFacet const& leaf = only_facet(second, folder.path("out/_._up-2.multimat"));
    EXPECT_EQ(leaf.plain_mat().transparency(), 1.0);
    EXPECT_EQ(leaf.textures().begin()->recoloured(), 0);
    mrFMPlainMat const& plain = only_facet(third, folder.path("out/material_3.multimat")).plain_mat();
    EXPECT_EQ(plain.name(), "material 3");
    EXPECT_EQ(plain.diffuse_colour(), giColour(128, 188, 0, 0));
    EXPECT_EQ(plain.transparency(), 0.0);
    EXPECT_NEAR(plain.emission(), 0.7354, 1e-4);
    EXPECT_EQ(plain.refractive_index(), 1.4);
    EXPECT_EQ(files_in(folder.path("out")), 3);
}

TEST(mrtool_import, finds_the_images_of_a_gltf_scene)
{
    TestFolder const folder;
    std::string const image = png_bytes(*four_colours());
    write_bytes(folder.path("b.bin"), "12" + image);
    std::string const view = R"({"buffer":0,"byteOffset":2,"byteLength":)" + std::to_string(image.size());
    std::string materials, textures;
    for (std::string const number : {"0", "1", "2", "3"}) {
        std::string const comma = number == "0" ? "" : ",";
        materials += comma + R"({"pbrMetallicRoughness":{"baseColorTexture":{"index":)" + number + "}}}";
        textures += comma + R"({"extensions":{"KHR_texture_basisu":{"source":)" + number + "}}}";
    }
    // A red pixel; a view of a file; one that goes beyond its end; a file that is not there.
    write_bytes(
        folder.path("a.gltf"),
        R"({"asset":{"version":"2.0"},"images":[{"uri":"data:image/bmp;base64,)"
        "Qk06AAAAAAAAADYAAAAoAAAAAQAAAAEAAAABABgAAAAAAAQAAAAAAAAAAAAAAAAAAAAAAAAAAAD/AA=="
        R"("},{"bufferView":0},{"bufferView":1,"name":"cut"},{"uri":"my%20oak.png"}],"bufferViews":[)" +
            view + "}," + view + R"(0}],"buffers":[{"uri":"b.bin"}],"textures":[)" + textures +
            R"(],"materials":[)" + materials + "]}");
    Outcome const made = import(folder, "a.gltf");
    EXPECT_EQ(made.status, 1);
    expect_said(made,
                {"\"material 3\": written without its texture \"cut\": the file ends before it does\n",
                 "\"material 4\": written without its texture \"my%20oak.png\": there is no such file\n"});
    mrFileMat red, four;
    only_facet(red, folder.path("out/material_1.multimat"));
    EXPECT_EQ(pixel(*red.images().read("texture-1"), 0, 0), "255 0 0");
    only_facet(four, folder.path("out/material_2.multimat"));
    EXPECT_TRUE(four_colours()->equal(four.images().read("texture-2")));
}

TEST(mrtool_import, takes_from_an_mtl_file_what_it_says_and_no_more)
{
    TestFolder const folder;
    // Lines that end in CR alone, one joined to the next; one file by two names, and one that is not there.
    write_bytes(folder.path("a.obj"),
                "mtllib ./a.mtl \\\r././a.mtl\rmtllib gone.mtl\rv 0 0 0 1 0 0\rv 1 0 0\r"
                "v 0 1 0\rusemtl lost\rf 1 2 3\r");
    std::string unknown;
    for (int at = 1; at <= 103; ++at)
        unknown += "unknown" + std::to_string(at) + "\nunknown1\n";
    write_bytes(folder.path("a.mtl"), "newmtl plain\nmap_Kd -s 2 2 1 -clamp on " + std::string(5000, 'a') +
                                          "\nnewmtl plain\nKd 1 x 2\nKd 0.5\nrefl -type sphere sky.png\n"
                                          "Tr 0.25 # a quarter\nKd 1 0 0\nnewmtl " +
                                          std::string(4095, 'n') + "\u00fc\n" + unknown);
    Outcome const made = import(folder, "a.obj");
    EXPECT_EQ(made.status, 1);
    expect_said(made,
                {"a.obj: the colours of the vertices: not carried over",
                 "a.obj: the material library \"gone.mtl\": there is no such file\n",
                 "a.obj: material \"lost\": not carried over, no material library that was read has it\n",
                 "it: the texture's option \"-s 2 2 1\", the texture's option \"-clamp on\"\n",
                 "\"plain\": written without its texture \"" + std::string(100, 'a') +
                     "...\": its path is longer than 4096 bytes\n",
                 "\"plain\": \"Kd\" in line 4 of a.mtl makes no sense\n",
                 "\"Kd\" in line 8 of a.mtl takes the place of an earlier one\n",
                 "it: the reflection map \"sky.png\"\n",
                 "it: the statement \"unknown1\", the statement \"unknown2\"",
                 "\"unknown100\", and 3 more of this kind, the end of its name\n"});
    mrFileMat other, cut;
    mrFMPlainMat const& red = only_facet(other, folder.path("out/plain-2.multimat")).plain_mat();
    EXPECT_EQ(red.diffuse_colour(), giColour(255, 0, 0, 0));
    EXPECT_EQ(red.transparency(), 0.25);
    only_facet(cut, folder.path("out/" + std::string(100, 'n') + ".multimat"));
    EXPECT_EQ(property(cut, "material"), std::string(4095, 'n'));
    EXPECT_EQ(files_in(folder.path("out")), 3);
}

TEST(mrtool_import, replaces_nothing_unless_told)
{
    TestFolder const folder;
    write_glb(folder.path("a.glb"), R"([{"name":"red"}])");
    fs::create_directory(folder.path("out"));
    write_bytes(folder.path("out/red.multimat"), "as it was");
    Outcome const refused = import(folder, "a.glb");
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(refused.errors, HasSubstr("red.multimat is there already; --force replaces it"));
    EXPECT_EQ(read_bytes(folder.path("out/red.multimat")), "as it was");

    Outcome const replaced = import(folder, "a.glb", " --force");
    EXPECT_EQ(replaced.status, 0) << replaced.errors;
    mrFileMat red;
    only_facet(red, folder.path("out/red.multimat"));

    // Not even when told, where that would be the scene.
    fs::remove(folder.path("out/red.multimat"));
    fs::create_symlink(folder.path("a.glb"), folder.path("out/red.multimat"));
    EXPECT_THAT(import(folder, "a.glb", " --force").errors, HasSubstr("red.multimat leads to the scene "));
    fs::rename(folder.path("a.glb"), folder.path("out/red.multimat"));
    fs::create_symlink(folder.path("out/red.multimat"), folder.path("a.glb"));
    Outcome const spared = import(folder, "a.glb", " --force");
    EXPECT_EQ(spared.status, 2);
    EXPECT_THAT(spared.errors, HasSubstr("a.glb lies where its material files would"));
    EXPECT_TRUE(read_bytes(folder.path("a.glb")).starts_with("glTF"));
}

TEST(mrtool_import, names_what_fails)
{
    TestFolder const folder;
    write_bytes(folder.path("bad.obj"), "nothing");
    write_bytes(folder.path("cut.ply"), "ply\nformat binary_lit");
    write_glb(folder.path("good.glb"),
              R"([{"name":"red","pbrMetallicRoughness":{"roughnessFactor":"rough"}}])");
    Outcome const made = run_mrtool("import " + folder.path("bad.obj") + " " + folder.path("cut.ply") + " " +
                                    folder.path("") + " " + folder.path("gone.obj") + " " +
                                    folder.path("good.glb") + " -o " + folder.path("out"));
    EXPECT_EQ(made.status, 1);
    expect_said(made,
                {"bad.obj: not a readable scene: ", "cut.ply: not a readable scene: the file ends too early",
                 ": a folder, not a scene file", "gone.obj: No such file or directory",
                 "\"red\": its \"roughnessFactor\" makes no sense\n"});
    EXPECT_TRUE(fs::exists(folder.path("out/red.multimat")));
}

TEST(mrtool_import, says_which_textures_lie_outside_the_scenes_folder)
{
    TestFolder const folder;
    fs::create_directory(folder.path("scene"));
    write_bytes(folder.path("own.png"), png_bytes(*four_colours()));
    fs::create_symlink(folder.path("own.png"), folder.path("scene/link.png"));
    write_bytes(folder.path("scene/a.obj"), "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl a\nf 1 2 3\n");
    write_bytes(folder.path("scene/a.mtl"),
                "newmtl up\nmap_Kd ../own.png\nnewmtl whole\nmap_Kd " + folder.path("own.png") +
                    "\nnewmtl a\nmap_Kd link.png\nnewmtl none\nmap_Kd /dev/zero\n");
    Outcome const made = import(folder, "scene/a.obj");
    EXPECT_EQ(made.status, 1);
    std::string const outside = "\" is taken from outside the scene's folder\n";
    expect_said(made,
                {"its texture \"../own.png" + outside, "its texture \"" + folder.path("own.png") + outside,
                 "its texture \"link.png" + outside,
                 "written without its texture \"/dev/zero\": there is no such file\n"});
}

TEST(mrtool_import, says_once_which_textures_are_taken_in_the_place_of_others)
{
    TestFolder const folder;
    fs::create_directory(folder.path("more"));
    write_bytes(folder.path("more/Oak.png"), png_bytes(*four_colours()));
    write_bytes(folder.path("a.obj"), "mtllib a.mtl\n");
    write_bytes(folder.path("a.mtl"), "newmtl one\nmap_Kd -clamp off \"maps/my oak.png\"\n"
                                      "newmtl two\nmap_Kd \"oak.png\"\nnewmtl three\nmap_Kd oak.png\n");
    Outcome const made =
        import(folder, "a.obj", " --textures " + folder.path("") + " --textures " + folder.path("more"));
    EXPECT_EQ(made.status, 1);
    std::string const said = "its texture \"oak.png\": there is no such file; " +
                             folder.path("more/Oak.png") + " is taken in its place\n";
    expect_said(made, {"without its texture \"maps/my oak.png\": there is no such file\n", said});
    EXPECT_EQ(made.errors.find(said), made.errors.rfind(said));
    EXPECT_THAT(made.errors, Not(HasSubstr("outside")));
    mrFileMat two;
    EXPECT_EQ(only_facet(two, folder.path("out/two.multimat")).textures().size(), 1u);
    EXPECT_EQ(import(folder, "a.obj", " --textures " + folder.path("a.mtl")).status, 2);
}
