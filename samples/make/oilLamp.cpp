// An oil lamp: a glTF scene in one file, with its textures inside.
#include "samples.h"

#include "glbFile.h"
#include "sampleFile.h"
#include "textures.h"

#include <cmath>
#include <numbers>

namespace {

enum
{
    wood,
    tiled_glaze,
    brass,
    glass,
    light
};

std::vector<GlbImage> images()
{
    return {{"oak", png(*oak())}, {"star tiles", png(*star_tiles())}};
}

std::vector<GlbMaterial> materials()
{
    return {
        {.name = "Wooden foot", .roughness = 0.55, .image = 0},
        {.name = "Painted glaze", .roughness = 0.15, .image = 1},
        {.name = "Brass", .base_colour = {0.83, 0.65, 0.31, 1}, .metallic = 1, .roughness = 0.22},
        {.name = "Chimney glass",
         .base_colour = {0.86, 0.93, 0.9, 0.25},
         .roughness = 0.03,
         .double_sided = true},
        {.name = "Flame", .base_colour = {1, 0.78, 0.4, 1}, .emission = {1, 0.62, 0.22}},
    };
}

Mesh foot()
{
    std::vector<Stretch> const profile{
        {{0, 0}, {8.4, 0}}, curve({{8.4, 0}, {9, 0.6}, {8.8, 1.5}, {8, 2}}, 2), {{8, 2}, {0, 2}}};
    return textured_by_side(revolve(profile, 28), 22);
}

Mesh font()
{
    std::vector<Stretch> const profile{
        {{0, 2}, {5, 2}}, curve({{5, 2}, {5.2, 3}, {7.4, 6.5}, {7.2, 9.6}, {4.6, 12.4}, {2.6, 13.4}}, 2)};
    // Two tiles a picture: twelve around, and so high that they are nearly square.
    return textured_often(revolve(profile, 30), 6, 3);
}

Mesh ring_handle()
{
    std::vector<giPoint3> path;
    constexpr int steps = 14;
    for (int step = 0; step <= steps; ++step) {
        double const angle = std::numbers::pi * (-0.78 + 1.56 * step / steps);
        path.push_back({8.2 + 2.8 * std::cos(angle), 8 + 2.8 * std::sin(angle), 0});
    }
    return tube(path, std::vector<double>(path.size(), 0.5), 8);
}

Mesh burner()
{
    std::vector<Stretch> const profile{{{2.9, 13}, {3.1, 13.4}, {3.1, 14.2}, {2.6, 14.4}},
                                       curve({{2.6, 14.4}, {2.2, 15.4}, {2.4, 16.4}, {4.1, 17.4}}, 2),
                                       {{4.1, 17.4}, {4.1, 18.6}},
                                       {{4.1, 18.6}, {3.8, 18.6}, {3.8, 17.6}},
                                       curve({{3.8, 17.6}, {2, 18}, {0.9, 19}, {0, 19.2}}, 2)};
    Mesh mesh = revolve(profile, 22);
    std::vector<Stretch> const knob{
        {{0.3, 2}, {0.3, 5.6}}, {{0.3, 5.6}, {1.1, 5.6}}, {{1.1, 5.6}, {1.1, 6.2}}, {{1.1, 6.2}, {0, 6.2}}};
    append(mesh, moved(tipped_right(revolve(knob, 10)), {0, 15.4, 0}));
    append(mesh, ring_handle());
    return mesh;
}

Mesh flame()
{
    return revolve({curve({{0, 19.2}, {1, 20.4}, {1.1, 21.8}, {0.5, 24}, {0, 25.6}}, 2)}, 10);
}

Mesh chimney()
{
    return revolve(
        {curve({{3.6, 17.7}, {3.7, 18.8}, {4.9, 21.6}, {4.4, 25}, {2.8, 29}, {2.4, 34}, {2.6, 37}}, 2)}, 24);
}

} // namespace

void make_oil_lamp(std::filesystem::path const& samples)
{
    std::vector<GlbPart> const parts{{"foot", wood, foot()},
                                     {"font", tiled_glaze, font()},
                                     {"burner", brass, burner()},
                                     {"flame", light, flame()},
                                     {"chimney", glass, chimney()}};
    write_file(samples / "scenes/oil-lamp.glb", glb_bytes(images(), materials(), parts));
}
