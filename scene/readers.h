// The materials of scenes, a reader for each format.
#pragma once

#include "notes.h"

#include <string_view>

namespace sc {

/// Reads the materials of all libraries that an OBJ file names, whether a surface has them or not. Where a
/// library is not found (see find_scene_file()), the MTL file that is called like the scene stands in for it.
Expected<scScene> read_obj(std::string const& path);

/// Appends the materials of an MTL file, one for each "newmtl", in the file's order.
///
/// A material has the values that the file gives, without defaults. A line that makes no sense, or that a material
/// file has no place for, is noted; the rest of the material is read.
/// @return false when the file cannot be opened
bool read_mtl_file(std::string const& path, scScene& scene);

/// Whether it is a glTF or GLB file, by its name or its beginning.
bool is_gltf(std::string const& path);

/// Whether it is a glTF file of version 1, also where that leaves its version out.
bool is_gltf_1(std::string const& path);

/// Whether a file begins like one of M3D, a format that not every build of Assimp reads.
bool is_m3d(std::string_view beginning);

/// Reads all materials of a glTF file, whether a surface has them or not. What a glTF 2 file leaves out is
/// as the format says: white, opaque, metal, rough. glTF 1, which is a format of its own, is left to Assimp.
Expected<scScene> read_gltf(std::string const& path);

/// Reads the materials of a scene in any format that Assimp reads. A material that Assimp made up for surfaces
/// without one is left out unless a surface has it. It is only as safe as Assimp is.
Expected<scScene> read_with_assimp(std::string const& path);

/// Whether Assimp reads files of the extension.
/// @param extension  in lower case, without the point
bool assimp_knows(std::string const& extension);

} // namespace sc
