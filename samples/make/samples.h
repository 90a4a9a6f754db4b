// The parts that the samples are made in. Each writes its files into the samples folder, or throws
// std::runtime_error.
#pragma once

#include <filesystem>

/// images/: pictures in several formats.
void make_images(std::filesystem::path const& samples);

/// scenes/still-life.obj, with its materials beside it and their textures in textures/.
void make_still_life(std::filesystem::path const& samples);

/// scenes/oil-lamp.glb, with its textures inside.
void make_oil_lamp(std::filesystem::path const& samples);

/// meshes/gear.stl, a mesh without materials.
void make_gear(std::filesystem::path const& samples);

/// materials/: material files.
void make_materials(std::filesystem::path const& samples);

/// palettes/: palette files.
void make_palettes(std::filesystem::path const& samples);
