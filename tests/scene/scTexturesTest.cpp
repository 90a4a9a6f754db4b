#include "scTextures.h"

#include "mrTest.h"
#include "rawPNG.h"

#include <filesystem>

namespace {

scReader const reader;

scMaterial textured(std::string const& path)
{
    scMaterial material;
    material.texture = path;
    return material;
}

} // namespace

TEST(scTextures, have_so_many_pixels_together)
{
    constexpr std::uint32_t side = 4096;
    TestFolder const folder;
    RawPNG black{side, side, 1};
    black.rows = std::string(side * (1 + side / 8), '\0');
    std::string const bytes = black.bytes();
    write_bytes(folder.path("black.png"), bytes);
    scScene scene;
    scene.path = folder.path("a.obj");
    scTextures textures(scene, reader);
    std::uint64_t taken = 0;
    std::string reason;
    scMaterial const material = textured("black.png");
    while (textures.read(material, reason) && taken < 1000)
        ++taken;
    EXPECT_EQ(reason, "the scene's textures have more pixels than are allowed");
    std::uint64_t const pixels = std::uint64_t{side} * side;
    std::uint64_t const allowed = bytes.size() * scTextures::max_pixels_per_byte;
    EXPECT_GE(taken * pixels, scTextures::max_scene_pixels + taken * allowed);
    EXPECT_LT((taken - 1) * (pixels - allowed), scTextures::max_scene_pixels);
}

TEST(scTextures, are_found_by_each_spelling_and_seen_when_they_lie_outside)
{
    TestFolder const folder;
    std::filesystem::create_directories(folder.path("scene/maps"));
    RawPNG pixel;
    pixel.rows = std::string(1 + 4 * 8, '\0');
    write_bytes(folder.path("own.png"), pixel.bytes());
    write_bytes(folder.path("scene/maps/my oak.png"), pixel.bytes());
    scScene scene;
    scene.path = folder.path("scene/a.gltf");
    scTextures textures(scene, reader);
    struct
    {
        char const* path;
        bool found;
        bool outside;
    } const cases[] = {
        {"maps\\my oak.png", true, false},
        {"maps/my%20oak.png", true, false},
        {"file://maps/my%20oak.png", true, false},
        {"maps/%2e%2e/maps/my oak.png", true, false},
        {"../own.png", true, true},
        {"%2e%2e/own.png", true, true},
        {"%2E%2e%2Fown.png", true, true},
        {"maps/..%5c../own.png", false, false},
        {"%2e%2e/gone.png", false, false},
        {"../OWN.png", false, false},
        {"..\\scene\\maps\\MY oak.png", false, false},
    };
    for (auto const& each : cases) {
        std::string reason;
        EXPECT_EQ(textures.read(textured(each.path), reason) != nullptr, each.found) << each.path << reason;
        EXPECT_EQ(textures.lies_outside(textured(each.path)), each.outside) << each.path;
        EXPECT_EQ(reason, each.found ? "" : "there is no such file") << each.path;
    }
}

TEST(scTextures, have_others_stand_in_from_the_folders_that_may_be_looked_in)
{
    TestFolder const folder;
    for (char const* each : {"scene/Maps", "scene/empty", "more/wood", "private"})
        std::filesystem::create_directories(folder.path(each));
    std::filesystem::create_directory_symlink(folder.path("private"), folder.path("scene/Link"));
    RawPNG pixel;
    pixel.rows = std::string(1 + 4 * 8, '\0');
    std::string const image = pixel.bytes();
    for (char const* each : {"scene/own.png", "scene/Maps/Gr\u00dcn.PNG", "scene/Maps/Grun.PNG",
                             "scene/Maps/GRUN.png", "more/wood/oak.png", "more/Pine.png", "private/key.png"})
        write_bytes(folder.path(each), image);
    scReadOptions options;
    options.texture_folders = {folder.path("more")};
    scReader const more(options);
    scScene scene;
    scene.path = folder.path("scene/a.gltf");
    scTextures textures(scene, more);
    struct
    {
        std::string path;
        char const* found;
        bool stands_in;
    } const cases[] = {
        {"own.png", "scene/own.png", false},
        {"Link/key.png", "private/key.png", false}, // as ever, and said to lie outside
        {"C:\\work\\own.png", "scene/own.png", true},
        {"/gone/OWN.PNG", "scene/own.png", true},
        {"./maps//gr\u00fcn.png", "scene/Maps/Gr\u00dcn.PNG", true},
        {"maps/gr\xfcn.png", "scene/Maps/Gr\u00dcn.PNG", true},
        {"maps\\grun.png", "scene/Maps/GRUN.png", true},
        {"wood/oak.png", "more/wood/oak.png", true},
        {"Wood%2fOAK.png", "more/wood/oak.png", true},
        {"../elsewhere/pine.png", "more/Pine.png", true},
        {"link/key.png", nullptr, false},
        {"../PRIVATE/key.png", nullptr, false},
        {"../private/key.pn", nullptr, false},
        {std::string("Maps/grun.png\0", 14), nullptr, false},
        {"empty", nullptr, false},
        {"MAPS", nullptr, false},
        {"..", nullptr, false},
    };
    for (auto const& each : cases) {
        std::string reason;
        scMaterial const material = textured(each.path);
        EXPECT_EQ(textures.read(material, reason) != nullptr, each.found != nullptr) << each.path << reason;
        std::string const other = textures.stand_in(material);
        EXPECT_EQ(!other.empty(), each.stands_in) << each.path;
        EXPECT_TRUE(other.empty() || std::filesystem::equivalent(other, folder.path(each.found)))
            << each.path << other;
        EXPECT_EQ(textures.lies_outside(material), each.path == "Link/key.png") << each.path;
    }
}
