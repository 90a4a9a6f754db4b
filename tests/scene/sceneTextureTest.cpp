#include "sceneTexture.h"

#include "program.h"
#include "rawPNG.h"

namespace mrtool {

static UntrustedReader const reader(MRTOOL);

TEST(SceneTextures, have_so_many_pixels_together)
{
    constexpr std::uint32_t side = 4096;
    TestFolder const folder;
    RawPNG black{side, side, 1};
    black.rows = std::string(side * (1 + side / 8), '\0');
    std::string const bytes = black.bytes();
    write_bytes(folder.path("black.png"), bytes);
    Scene const scene;
    SceneTextures textures(folder.path("a.obj"), scene, reader);
    std::uint64_t taken = 0;
    std::string reason;
    SceneMaterial material;
    material.texture = "black.png";
    while (textures.image(material, reason) && taken < 1000)
        ++taken;
    EXPECT_EQ(reason, "the scene's textures have more pixels than are allowed");
    std::uint64_t const pixels = std::uint64_t{side} * side;
    std::uint64_t const allowed = bytes.size() * SceneTextures::max_pixels_per_byte;
    EXPECT_GE(taken * pixels, SceneTextures::max_scene_pixels + taken * allowed);
    EXPECT_LT((taken - 1) * (pixels - allowed), SceneTextures::max_scene_pixels);
}

} // namespace mrtool
