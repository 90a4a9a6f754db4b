#include "scReader.h"

#include "scMaterialMaker.h"
#include "wired.h"

#include "mrFMPlainMat.h"

#include "giTriBlock.h"

#include <gmock/gmock.h>

#include <cerrno>
#include <filesystem>
#include <set>
#include <sys/wait.h>

using testing::ElementsAre;
using testing::HasSubstr;

namespace {

scReader const in_child;
scReader const here({.place = scReadHere});

/// The files of a folder of samples, in order.
std::set<std::string> samples_in(std::string const& folder)
{
    std::set<std::string> paths;
    for (auto const& entry : std::filesystem::directory_iterator(sample(folder)))
        if (entry.is_regular_file())
            paths.insert(entry.path().string());
    return paths;
}

/// The materials of a scene file and its surfaces, or why there are none.
std::string wired_scene(scReader const& reader, std::string const& path)
{
    scScene materials, surfaces;
    std::string reason, other;
    return (reader.read_materials(path, materials, reason) ? wired(materials) : reason) +
           (reader.read_surfaces(path, surfaces, other) ? wired(surfaces.surfaces) : other);
}

scReader helped_by(std::string const& helper)
{
    scReadOptions options;
    options.helper = helper;
    return scReader(options);
}

std::string reason_of(scReader const& reader)
{
    scScene scene;
    std::string reason;
    EXPECT_FALSE(reader.read_surfaces(sample("meshes/gear.stl"), scene, reason));
    EXPECT_TRUE(scene.surfaces.empty());
    return reason;
}

/// The only material of an MTL file.
scMaterial read_mtl(std::string const& statements)
{
    TestFolder const folder;
    write_bytes(folder.path("a.obj"), "mtllib a.mtl\n");
    write_bytes(folder.path("a.mtl"), "newmtl a\n" + statements);
    scScene scene;
    std::string reason;
    EXPECT_TRUE(here.read_materials(folder.path("a.obj"), scene, reason)) << reason;
    return scene.materials.at(0);
}

} // namespace

TEST(scReader, reads_the_same_here_and_in_a_child)
{
    std::set<std::string> paths = samples_in("scenes");
    paths.merge(samples_in("meshes"));
    paths.insert(sample("README.md"));
    paths.insert(sample("gone.glb"));
    for (std::string const& path : paths)
        EXPECT_EQ(wired_scene(in_child, path), wired_scene(here, path)) << path;
    EXPECT_GT(wired_scene(here, sample("meshes/gear.stl")).size(), 1000u);
}

/// The child may open the scene's folder alone, and what the scene names.
TEST(scReader, reads_the_same_in_a_child_of_files_outside_the_scenes_folder)
{
    TestFolder const folder;
    namespace fs = std::filesystem;
    fs::create_directory(folder.path("scene"));
    fs::create_directory(folder.path("links"));
    char const surface[] = "v 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl a\nf 1 2 3\n";
    write_bytes(folder.path("outside.mtl"), "newmtl a\nKd 1 0 0\n");
    write_bytes(folder.path("scene/a.obj"), std::string("mtllib gone.mtl \\\n../outside.mtl\n") + surface);
    write_bytes(folder.path("scene/b.obj"), std::string("mtllib ") + folder.path("outside.mtl\n") + surface);
    write_bytes(folder.path("scene/c.obj"), std::string("mtllib gone.mtl\n") + surface);
    fs::create_symlink(folder.path("outside.mtl"), folder.path("scene/c.mtl"));
    fs::create_symlink(folder.path("scene/b.obj"), folder.path("links/b.obj"));
    write_bytes(folder.path("outside.bin"), std::string(36, '\1') + std::string("\0\1\2", 3));
    write_bytes(folder.path("scene/d.gltf"),
                R"({"asset": {"version": "2.0"}, "scene": 0, "scenes": [{"nodes": [0]}],
        "nodes": [{"mesh": 0}], "materials": [{"name": "a", "pbrMetallicRoughness": {"baseColorTexture": {"index": 0}}}],
        "textures": [{"source": 0}], "images": [{"bufferView": 1, "mimeType": "image/png"}],
        "meshes": [{"primitives": [{"attributes": {"POSITION": 0}, "indices": 1, "material": 0}]}],
        "buffers": [{"byteLength": 39, "uri" : "..\/outside.bin"}],
        "bufferViews": [{"buffer": 0, "byteLength": 36}, {"buffer": 0, "byteOffset": 36, "byteLength": 3}],
        "accessors": [{"bufferView": 0, "componentType": 5126, "count": 3, "type": "VEC3"},
                      {"bufferView": 1, "componentType": 5121, "count": 3, "type": "SCALAR"}]})");
    for (char const* scene : {"scene/a.obj", "scene/b.obj", "scene/c.obj", "links/b.obj", "scene/d.gltf"}) {
        std::string const read = wired_scene(in_child, folder.path(scene));
        EXPECT_EQ(read, wired_scene(here, folder.path(scene))) << scene;
        EXPECT_EQ(read.find("cannot be opened"), read.npos) << scene;
        EXPECT_NE(read.find("is taken from outside"), read.npos) << scene;
    }
}

TEST(scReader, reads_the_same_images_here_and_in_a_child)
{
    std::string ours, theirs;
    for (std::string const& path : samples_in("images")) {
        gxImageFileFormat format = gxImageFilePNG;
        gxImageFileUtils::file_format_from_extension(
            utString(std::filesystem::path(path).extension().string().substr(1)), format);
        auto const image = here.read_image(path, format, ours);
        auto const other = in_child.read_image(path, format, theirs);
        ASSERT_TRUE(image && other) << path << ours << theirs;
        EXPECT_TRUE(image->equal(other.get())) << path;

        scImage embedded;
        embedded.extension = std::filesystem::path(path).extension().string().substr(1);
        embedded.bytes = read_bytes(path);
        auto const inner = in_child.read_image(embedded, theirs);
        ASSERT_TRUE(inner) << path << theirs;
        EXPECT_TRUE(image->equal(inner.get())) << path;
    }
    EXPECT_FALSE(here.read_image(sample("README.md"), gxImageFileBMP, ours));
    EXPECT_FALSE(in_child.read_image(sample("README.md"), gxImageFileBMP, theirs));
    EXPECT_EQ(ours, theirs);

    scImage pixels;
    pixels.width = pixels.height = 2;
    pixels.bytes = std::string(15, 'x');
    EXPECT_FALSE(here.read_image(pixels, ours));
    EXPECT_EQ(ours, "not a readable image: its size makes no sense");
    pixels.bytes += 'x';
    EXPECT_TRUE(here.read_image(pixels, ours));
}

TEST(scReader, finds_the_materials_of_surfaces)
{
    scScene scene;
    std::string reason;
    ASSERT_TRUE(here.read_surfaces(sample("scenes/still-life.obj"), scene, reason)) << reason;
    EXPECT_FALSE(scene.surfaces[0].material);
    ASSERT_TRUE(here.read_materials(sample("scenes/still-life.obj"), scene, reason)) << reason;
    std::set<std::size_t> used;
    for (scSurface const& surface : scene.surfaces) {
        ASSERT_TRUE(surface.material) << surface.material_name;
        EXPECT_EQ(scene.materials.at(*surface.material).name, surface.material_name);
        used.insert(*surface.material);
    }
    EXPECT_EQ(used.size(), scene.materials.size());
    // By a name that two of them have, nothing is found.
    scene.materials.clear();
    TestFolder const folder;
    write_bytes(folder.path("a.obj"), "mtllib a.mtl\nv 0 0 0\nv 1 0 0\nv 0 1 0\nusemtl a\nf 1 2 3\n");
    write_bytes(folder.path("a.mtl"), "newmtl a\nnewmtl a\n");
    ASSERT_TRUE(in_child.read_materials(folder.path("a.obj"), scene, reason)) << reason;
    ASSERT_TRUE(in_child.read_surfaces(folder.path("a.obj"), scene, reason)) << reason;
    EXPECT_FALSE(scene.surfaces.at(0).material);
}

TEST(scReader, believes_no_child)
{
    // A child that answers with its arguments instead of meshes.
    EXPECT_EQ(reason_of(helped_by("/bin/echo")), "reading it gave no sensible answer");
    EXPECT_EQ(reason_of(helped_by("/bin/false")), "reading it ended with status 1");
    scReadOptions options;
    options.time = std::chrono::milliseconds(1);
    EXPECT_EQ(reason_of(scReader(options)), "reading it took longer than 1 ms");
    EXPECT_TRUE(waitpid(-1, nullptr, WNOHANG) == -1 && errno == ECHILD);
}

TEST(scReader, tells_what_contains_a_child)
{
    std::vector<std::string> const words = in_child.containment();
    ASSERT_GE(words.size(), 2u);
    EXPECT_THAT(words, testing::IsSupersetOf({"no new privileges", "limits"}));
    EXPECT_TRUE(helped_by("/bin/false").containment().empty());
}

TEST(scReader, says_that_its_helper_does_not_start)
{
    TestFolder const folder;
    std::string const helper = folder.path("helper");
    std::string const subject = "the program " + helper + ", which reads files for others, does not start: ";
    EXPECT_EQ(reason_of(helped_by(helper)), subject + "No such file or directory");
    write_bytes(helper, "\x7f"
                        "ELF, but no more than that");
    EXPECT_EQ(reason_of(helped_by(helper)), subject + "Permission denied");
    std::filesystem::permissions(helper, std::filesystem::perms::owner_all);
    EXPECT_EQ(reason_of(helped_by(helper)), subject + "Exec format error");
}

TEST(scReader, takes_what_lets_more_light_through_in_glTF)
{
    struct
    {
        char const* alpha;
        char const* transmission;
        double transparency;
        char const* note;
    } const cases[] = {
        {"OPAQUE", "0.9", 0.9, "its opacity of 0.25 counts for nothing, as its alphaMode is OPAQUE"},
        {"BLEND", "0.9", 0.9, nullptr},
        {"BLEND", "0.5", 0.75,
         "not carried over, a material file has no place for it: the transmission of 0.5, since alpha makes "
         "it more "
         "transparent"},
        {"MASK", "0", 1.0,
         "not carried over, a material file has no place for it: the cutting away of what is less opaque "
         "than 0.5 "
         "(alphaMode MASK)"},
    };
    for (auto const& each : cases) {
        TestFolder const folder;
        write_bytes(folder.path("a.gltf"),
                    ut_concat(R"({"asset":{"version":"2.0"},"materials":[{"alphaMode":")", each.alpha,
                              R"(","pbrMetallicRoughness":{"baseColorFactor":[1,1,1,0.25]},)",
                              R"("extensions":{"KHR_materials_transmission":{"transmissionFactor":)",
                              each.transmission, "}}}]}"));
        scScene scene;
        std::string reason;
        ASSERT_TRUE(in_child.read_materials(folder.path("a.gltf"), scene, reason)) << reason;
        std::vector<scNote> notes = scene.materials.at(0).notes;
        EXPECT_EQ(scMaterialMaker::make_plain(scene.materials[0], "a", notes)->transparency(),
                  each.transparency)
            << each.alpha << each.transmission;
        EXPECT_EQ(scNote::lines(notes),
                  each.note ? std::vector<std::string>{each.note} : std::vector<std::string>{})
            << each.alpha << each.transmission;
    }
}

TEST(scReader, takes_d_before_Tr)
{
    for (char const* statements : {"d 0.75\nTr 0.5\n", "Tr 0.5\nd 0.75\n"}) {
        scMaterial const material = read_mtl(statements);
        EXPECT_EQ(material.opacity, 0.75) << statements;
        EXPECT_FALSE(material.transparency) << statements;
        EXPECT_THAT(scNote::lines(material.notes),
                    ElementsAre("its \"Tr\" of 0.5 is passed over, since its \"d\" says 0.75"))
            << statements;
    }
    for (char const* statements : {"d 0.667\nTr 0.3333\n", "Tr 0.3333\nd 0.667\n"})
        EXPECT_TRUE(read_mtl(statements).notes.empty()) << statements;
    EXPECT_EQ(read_mtl("Tr 0.25\n").transparency, 0.25);
}

TEST(scReader, converts_colours_in_xyz_and_names_spectral_ones)
{
    struct
    {
        char const* statements;
        std::optional<scColour> colour;
        std::vector<std::string> notes;
    } const cases[] = {
        // White and red of sRGB.
        {"Kd xyz 0.9505 1 1.089 # D65\n", scColour{1, 1, 1}, {}},
        {"Kd xyz 0.4124 0.2126 0.0193\n", scColour{1, 0, 0}, {}},
        {"Kd xyz 0.18\n", scColour{0.503, 0.450, 0.442}, {}},
        {"Kd xyz\n", {}, {"\"Kd\" in line 2 of a.mtl makes no sense"}},
        {"Kd spectral green.rfl 1\nKs spectral a.rfl\n",
         {},
         {"not carried over, a material file has no place for it: the spectral colour \"green.rfl\" (\"Kd "
          "spectral\"), the specular colour"}},
    };
    for (auto const& each : cases) {
        scMaterial const material = read_mtl(each.statements);
        EXPECT_EQ(scNote::lines(material.notes), each.notes) << each.statements;
        ASSERT_EQ(material.colour.has_value(), each.colour.has_value()) << each.statements;
        for (std::size_t at = 0; each.colour && at < 3; ++at)
            EXPECT_NEAR((*material.colour)[at], (*each.colour)[at], 0.002) << each.statements << at;
    }
}

TEST(scReader, names_what_it_does_not_read)
{
    struct
    {
        char const* name;
        std::string content;
        char const* scene;
        char const* mesh;
    } const cases[] = {
        {"a.gltf", R"({"asset":{"version":1.0},"meshes":{"a":7}})", nullptr, "it is glTF of version 1: "},
        {"b.gltf", R"({"meshes":{}})", "it is glTF of version 1: ", "it is glTF of version 1: "},
        {"c.gltf", R"({"meshes":[]})", "no glTF version in it", "No suitable reader found"},
        {"d.m3d", std::string("3DMO\x40\0\0\0HEAD\nv 1\no name\n", 24), "it is M3D", "it is M3D"},
        {"points.obj", "v 0 0 0\nv 1 0 0\nv 0 1 0\nv 1 1 0\np 1\nl 2 3 4\n", nullptr,
         "the file holds no triangles, only 1 point and 2 lines"},
        {"points.ply",
         "ply\nformat ascii 1.0\nelement vertex 2\nproperty float x\nproperty float y\nproperty float z\n"
         "end_header\n0 0 0\n1 0 0\n",
         nullptr, "the file holds no triangles, only 2 points"},
    };
    TestFolder const folder;
    for (auto const& each : cases) {
        write_bytes(folder.path(each.name), each.content);
        scScene scene;
        std::string reason;
        EXPECT_EQ(in_child.read_materials(folder.path(each.name), scene, reason), !each.scene) << each.name;
        EXPECT_THAT(reason, HasSubstr(each.scene ? each.scene : "")) << each.name;
        EXPECT_FALSE(in_child.read_surfaces(folder.path(each.name), scene, reason)) << each.name;
        EXPECT_THAT(reason, HasSubstr(each.mesh)) << each.name;
    }
}
