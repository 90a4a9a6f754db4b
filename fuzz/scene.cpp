// Scenes: the materials of glTF, OBJ and MTL files, by the readers that are the library's own.
#include "fuzz.h"

#include "scMaterialMaker.h"

#include "mrFMPlainMat.h"

#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>
#include <vector>

namespace {

/// A folder with a material library in it, in which every input is written: a scene may name files beside it.
struct SceneFolder
{
    SceneFolder()
    {
        std::filesystem::create_directory(path);
        write("lamp.mtl", "newmtl brass\nKd 0.8 0.6 0.2\n");
        write("library.obj", "mtllib scene.mtl\n");
    }
    ~SceneFolder() { std::filesystem::remove_all(path); }

    /// @return the path of the file
    std::string write(char const* name, std::string const& bytes) const
    {
        std::ofstream(path / name, std::ios::binary) << bytes;
        return (path / name).string();
    }

    std::filesystem::path const path =
        std::filesystem::temp_directory_path() / ("mr-fuzz-" + std::to_string(getpid()));
};

bool is_gltf(std::string_view bytes)
{
    std::size_t const first = bytes.find_first_not_of(" \t\r\n");
    return bytes.starts_with("glTF") || (first != std::string_view::npos && bytes[first] == '{');
}

/// Whether it may be glTF 1, which is not for the library's own reader: its version begins with 1, in JSON
/// perhaps as an escape.
bool is_gltf_1(std::string_view bytes)
{
    return bytes.starts_with("glTF\1") || bytes.find("\"1") != bytes.npos ||
           bytes.find("\"\\u0031") != bytes.npos;
}

void require_sense(std::vector<scNote> const& notes)
{
    for (scNote const& note : notes) {
        std::string const words = note.words();
        require(!words.empty() && words.size() <= scNote::max_words, "a note has words, and not too many");
    }
}

void require_sense(scScene const& scene)
{
    require_sense(scene.notes);
    for (scMaterial const& material : scene.materials) {
        std::vector<scNote> notes = material.notes;
        auto const plain = scMaterialMaker::make_plain(material, material.name, notes);
        require_sense(notes);
        for (double const number :
             {plain->polish(), plain->reflect(), plain->transparency(), plain->emission(),
              plain->refractive_index() / mrFMPlainMat::max_refractive_index})
            require(number >= 0.0 && number <= 1.0, "every number of a plain material is in its range");
    }
}

void read(std::string const& path)
{
    static scReader const reader({.place = scReadHere});
    scScene scene;
    std::string reason;
    bool const read = reader.read_materials(path, scene, reason);
    require(read || !reason.empty(), "a scene that does not read has a reason");
    require_sense(scene);
}

} // namespace

void try_input(std::string const& bytes)
{
    static SceneFolder const folder;
    if (is_gltf(bytes)) {
        if (!is_gltf_1(bytes))
            read(folder.write("scene.gltf", bytes));
        return;
    }
    folder.write("scene.mtl", bytes);
    read((folder.path / "library.obj").string());
    read(folder.write("scene.obj", bytes));
}
