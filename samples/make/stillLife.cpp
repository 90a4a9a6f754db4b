// A still life on a table: an OBJ scene, its materials in an MTL file, their textures beside it.
#include "samples.h"

#include "colours.h"
#include "objFile.h"
#include "sampleFile.h"
#include "textures.h"

namespace {

std::vector<MtlMaterial> materials()
{
    return {
        {.name = "oak", .diffuse = colours::white, .shininess = 90, .texture = "textures/oak.png"},
        {.name = "linen", .diffuse = {236, 150, 118}, .shininess = 4, .texture = "textures/linen.png"},
        {.name = "terrazzo", .diffuse = colours::white, .shininess = 250, .texture = "textures/terrazzo.png"},
        {.name = "wall_tiles",
         .diffuse = colours::white,
         .shininess = 490,
         .texture = "textures/scale-tiles.png"},
        {.name = "glaze", .diffuse = colours::slate, .shininess = 640},
        {.name = "poppy_heads", .diffuse = colours::ochre, .shininess = 10},
        {.name = "apple", .diffuse = colours::brick, .shininess = 160},
        {.name = "pear", .diffuse = {186, 178, 84}, .shininess = 60},
        {.name = "glass",
         .diffuse = {158, 204, 204},
         .shininess = 960,
         .opacity = 0.22,
         .refractive_index = 1.52},
        {.name = "pewter", .diffuse = {150, 154, 162}, .roughness = 0.25, .metalness = 0.9},
        {.name = "wax", .diffuse = colours::cream, .shininess = 40, .opacity = 0.92},
        {.name = "candle_light", .diffuse = {255, 196, 96}, .emission = {255, 170, 64}},
    };
}

// ---- The room

Mesh table()
{
    return textured_by_side(moved(slab({72, 3, 46}, 0.5), {0, -3, 0}), 36);
}

Mesh wall()
{
    return textured_by_side(moved(slab({72, 34, 2}, 0.2), {0, -3, -24}), 24);
}

Mesh runner()
{
    Stretch path{{-15, 0.15}, {22.8, 0.15}};
    for (giPoint2 const& point : curve({{22.8, 0.15}, {23.7, -0.6}, {23.9, -3}, {24.3, -11}}, 3))
        path.push_back(point);
    return moved(textured_often(sheet(path, 30), 1.5, 1.5), {15, 0, 0});
}

// ---- The vase with its dry poppies, on a block of terrazzo

giVector3 const vase_stands{-19, 4, -9};

Mesh block()
{
    return textured_by_side(moved(slab({18, vase_stands.y, 18}, 0.4), {vase_stands.x, 0, vase_stands.z}), 20);
}

Mesh vase()
{
    std::vector<Stretch> const profile{
        {{0, 0}, {4, 0}},
        curve({{4, 0}, {6.2, 3}, {7.6, 8}, {6.6, 13}, {3.6, 17.4}, {2.8, 20.6}, {3.6, 23}, {4.2, 23.6}}, 2),
        curve({{4.2, 23.6}, {3.6, 23.3}, {2.4, 20.6}, {2.6, 16}}, 2)};
    return moved(revolve(profile, 22), vase_stands);
}

Mesh poppy(giPoint3 const& bend, giPoint3 const& head)
{
    std::vector<giPoint3> const path{{0, 17, 0},
                                     {bend.x * 0.4, 24, bend.z * 0.4},
                                     bend,
                                     {(bend.x + head.x) / 2, (bend.y + head.y) / 2 + 0.6, head.z},
                                     head};
    Mesh mesh = tube(path, {0.3, 0.3, 0.28, 0.26, 0.3}, 5);
    std::vector<Stretch> const capsule{curve({{0, 0}, {1.6, 1.3}, {1.5, 2.8}, {0.5, 3.6}}, 1),
                                       {{0.5, 3.6}, {1.3, 4.0}, {0, 4.3}}};
    append(mesh, moved(revolve(capsule, 8), {head.x, head.y - 0.2, head.z}));
    return moved(mesh, vase_stands);
}

Mesh poppies()
{
    Mesh mesh = poppy({-2.4, 30, 1}, {-6, 34, 2});
    append(mesh, poppy({0.8, 32, -0.6}, {1.4, 39, -1.6}));
    append(mesh, poppy({3, 29, 1.4}, {7.4, 32, 3}));
    return mesh;
}

// ---- The bowl of fruit

giVector3 const bowl_stands{15, 0.15, -3};

Mesh bowl()
{
    std::vector<Stretch> const profile{{{0, 0.6}, {3.6, 0.6}, {4, 0}, {4.4, 0}},
                                       curve({{4.4, 0}, {5, 1}, {8.6, 3.2}, {11, 7.2}, {11.6, 9}}, 2),
                                       {{11.6, 9}, {11.2, 9}},
                                       curve({{11.2, 9}, {10.6, 7.2}, {8, 3.8}, {4, 1.6}, {0, 1.3}}, 1)};
    return moved(revolve(profile, 24), bowl_stands);
}

Mesh apple()
{
    return revolve({curve({{0, 0.5}, {1.2, 0}, {3.4, 2}, {3.7, 4.2}, {1.6, 6.2}, {0, 5.4}}, 2)}, 12);
}

Mesh pear()
{
    return revolve({curve({{0, 0.2}, {1.4, 0}, {3.5, 2}, {3.1, 4.6}, {1.6, 7.4}, {0.8, 9}, {0, 9.2}}, 2)},
                   12);
}

Mesh at_bowl(Mesh const& fruit, giVector3 const& by)
{
    return moved(moved(fruit, bowl_stands), by);
}

Mesh apples()
{
    Mesh mesh = at_bowl(apple(), {-4.6, 3, 1.6});
    append(mesh, at_bowl(apple(), {3.4, 2.6, 3.8}));
    append(mesh, moved(apple(), {2, 0.15, 14}));
    return mesh;
}

Mesh pears()
{
    Mesh mesh = at_bowl(pear(), {0.6, 3.2, -4});
    append(mesh, moved(pear(), {26, 0, 11}));
    return mesh;
}

// ---- The candle

giVector3 const candle_stands{-12, 0, 11};

Mesh holder()
{
    std::vector<Stretch> const profile{{{0, 0}, {6, 0}},
                                       curve({{6, 0}, {6.8, 0.8}, {7, 1.6}}, 2),
                                       {{7, 1.6}, {6.6, 1.6}},
                                       curve({{6.6, 1.6}, {6, 0.9}, {2.4, 0.6}}, 2),
                                       {{2.4, 0.6}, {1.9, 3.4}, {2.5, 3.8}},
                                       {{2.5, 3.8}, {0, 3.8}}};
    return moved(revolve(profile, 20), candle_stands);
}

Mesh candle()
{
    std::vector<Stretch> const profile{{{1.6, 3.8}, {1.6, 15}},
                                       curve({{1.6, 15}, {1.4, 15.4}, {0.6, 15.1}, {0, 15.1}}, 1)};
    return moved(revolve(profile, 12), candle_stands);
}

Mesh flame()
{
    std::vector<Stretch> const profile{curve({{0, 15.6}, {0.8, 16.4}, {0.9, 17.4}, {0.4, 19}, {0, 20.2}}, 2)};
    return moved(revolve(profile, 8), candle_stands);
}

std::vector<ObjPart> parts()
{
    return {
        {"table", "oak", true, table()},      {"wall", "wall_tiles", true, wall()},
        {"runner", "linen", true, runner()},  {"block", "terrazzo", true, block()},
        {"vase", "glaze", false, vase()},     {"poppies", "poppy_heads", false, poppies()},
        {"apples", "apple", false, apples()}, {"pears", "pear", false, pears()},
        {"bowl", "glass", false, bowl()},     {"candlestick", "pewter", false, holder()},
        {"candle", "wax", false, candle()},   {"flame", "candle_light", false, flame()},
    };
}

} // namespace

void make_still_life(std::filesystem::path const& samples)
{
    std::filesystem::path const folder = samples / "scenes";
    write_file(folder / "still-life.obj", obj_text("still-life.mtl", parts()));
    write_file(folder / "still-life.mtl", mtl_text(materials()));
    write_file(folder / "textures/oak.png", png(*oak()));
    write_file(folder / "textures/linen.png", png(*linen()));
    write_file(folder / "textures/terrazzo.png", png(*terrazzo()));
    write_file(folder / "textures/scale-tiles.png", png(*scale_tiles()));
}
