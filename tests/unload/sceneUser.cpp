// A part of an application that comes and goes, with the reader of scenes.
#include "scReader.h"

/// Reads a scene by the library's own reader, and one by Assimp.
/// @return 0, or -1 when one does not read
extern "C" __attribute__((visibility("default"))) int use()
{
    scReader const reader({scReadHere});
    scScene scene;
    std::string reason;
    bool const read = reader.read_materials(MR_SAMPLES "/scenes/oil-lamp.glb", scene, reason) &&
                      reader.read_surfaces(MR_SAMPLES "/meshes/gear.stl", scene, reason) &&
                      scReader::knows_extension("3ds") && !scReader::knows_extension("3ds;*.3mf");
    return read ? 0 : -1;
}
