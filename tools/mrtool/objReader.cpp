#include "objReader.h"

#include "mtlReader.h"
#include "objStatements.h"
#include "sceneFile.h"
#include "text.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>

namespace mrtool {

namespace {

class ObjReader
{
public:
    ObjReader(std::string const& path, Scene& scene) : m_path(path), m_scene(scene) {}

    bool read(std::string& reason)
    {
        errno = 0;
        ObjStatements statements(m_path);
        if (!statements.good()) {
            reason = std::strerror(errno);
            return false;
        }
        bool known = false;
        ObjStatement statement;
        while (statements.next(statement))
            known = take(statement) || known;
        if (!known)
            reason = "no statement of an OBJ file in it";
        say_undefined();
        return known;
    }

private:
    /// @return whether it is a statement by which an OBJ file is known
    bool take(ObjStatement const& statement)
    {
        std::string const& word = statement.word;
        if (word == "v")
            return take_vertex(statement.rest);
        if (word == "mtllib")
            take_libraries(statement.rest);
        else if (word == "usemtl" && !statement.rest.empty() && m_known_uses.insert(statement.rest).second)
            m_uses.push_back(statement.rest);
        else if (word == "usemap" || word == "maplib")
            say_once(text("\"", word, "\": not carried over, only textures of materials are"));
        return word == "mtllib" || word == "usemtl" || word == "f";
    }

    /// Some programs write a colour after a vertex's three coordinates.
    bool take_vertex(std::string_view rest)
    {
        int count = 0;
        while (count < 6 && take_number(rest))
            ++count;
        if (count == 6)
            say_once("the colours of the vertices: not carried over, a material file has no place for them");
        return count >= 3;
    }

    /// A library's name may have blanks in it, and several may stand in a line.
    void take_libraries(std::string const& rest)
    {
        std::string_view left = rest;
        if (find_scene_file(m_path, rest) || rest.find_first_of(" \t") == rest.npos)
            return take_library(rest);
        while (!left.empty())
            take_library(std::string(take_word(left)));
    }

    void take_library(std::string const& name)
    {
        if (!m_libraries.insert(name).second)
            return;
        std::string const library = text("the material library \"", name, "\"");
        std::optional<SceneFile> file = find_scene_file(m_path, name);
        if (!file) {
            std::string const other = std::filesystem::path(m_path).stem().string() + ".mtl";
            file = m_libraries.contains(other) ? std::nullopt : find_scene_file(m_path, other);
            if (file) {
                m_libraries.insert(other);
                m_scene.warnings.push_back(
                    text(library, ": ", no_such_file, "; ", other, " is read in its place"));
            }
        }
        if (file && file->outside)
            m_scene.warnings.push_back(text(library, " ", taken_from_outside));
        if (!file || !read_mtl_file(file->path, m_scene))
            m_scene.failures.push_back(text(library, ": ", file ? "it cannot be opened" : no_such_file));
    }

    void say_undefined()
    {
        std::set<std::string_view> defined;
        for (SceneMaterial const& material : m_scene.materials)
            defined.insert(material.name);
        for (std::string const& name : m_uses)
            if (!defined.contains(name))
                m_scene.failures.push_back(text(
                    "material \"", name, "\": not carried over, no material library that was read has it"));
    }

    void say_once(std::string words)
    {
        if (std::find(m_scene.warnings.begin(), m_scene.warnings.end(), words) == m_scene.warnings.end())
            m_scene.warnings.push_back(std::move(words));
    }

    std::string m_path;
    Scene& m_scene;
    std::vector<std::string> m_uses; ///< the materials that surfaces have
    std::set<std::string> m_known_uses;
    std::set<std::string> m_libraries; ///< the names that came so far
};

} // namespace

bool read_obj_scene(std::string const& path, Scene& scene, std::string& reason)
{
    return ObjReader(path, scene).read(reason);
}

} // namespace mrtool
