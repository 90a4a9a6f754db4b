// OBJ scenes and the MTL files that hold their materials.
#pragma once

#include "gsRGB.h"
#include "mesh.h"

#include <string>
#include <vector>

struct ObjPart
{
    std::string name;
    std::string material;
    bool textured;
    Mesh mesh;
};

/// The text of an OBJ file.
/// @param material_file  its name, as seen from the OBJ file
std::string obj_text(std::string const& material_file, std::vector<ObjPart> const& parts);

struct MtlMaterial
{
    std::string name;
    gsRGB diffuse;
    double shininess = 0; ///< 0 to 1000
    double opacity = 1;
    double refractive_index = 1;
    gsRGB emission{};
    std::string texture{}; ///< path seen from the MTL file, or empty
    double roughness = -1; ///< with metalness, from 0 on, in the place of the shininess
    double metalness = -1;
};

/// The text of an MTL file.
std::string mtl_text(std::vector<MtlMaterial> const& materials);
