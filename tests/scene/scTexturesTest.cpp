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
    };
    for (auto const& each : cases) {
        std::string reason;
        EXPECT_EQ(textures.read(textured(each.path), reason) != nullptr, each.found) << each.path << reason;
        EXPECT_EQ(textures.lies_outside(textured(each.path)), each.outside) << each.path;
        EXPECT_EQ(reason, each.found ? "" : "there is no such file") << each.path;
    }
}
