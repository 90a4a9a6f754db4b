// Writes a material file of each material of a scene: import-gltf SCENE FOLDER.
#include "mrFileMat.h"
#include "scFileNames.h"
#include "scMaterialMaker.h"

#include <cstdio>

int main(int argc, char** argv)
{
    scReader const reader; // reads in a child process, so that no scene can do harm
    scScene scene;
    std::string reason = "usage: import-gltf SCENE FOLDER";
    if (argc != 3 || !reader.read_materials(argv[1], scene, reason)) {
        std::fprintf(stderr, "%s\n", reason.c_str());
        return 1;
    }
    scFileNames names;
    scMaterialMaker maker(scene, reader);
    for (std::size_t at = 0; at < scene.materials.size(); ++at) {
        std::string const name = names.make_unique(scene.material_name(at));
        std::vector<scNote> notes;
        int const written = maker.make(at, notes)->write(utString(argv[2] + ("/" + name) + ".multimat"));
        std::printf("%s%s\n", name.c_str(), written ? "" : ": cannot be written");
        for (std::string const& line : scNote::lines(notes))
            std::printf("  %s\n", line.c_str());
    }
    return 0;
}
