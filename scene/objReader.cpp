#include "objReader.h"

#include "mtlReader.h"
#include "objStatements.h"
#include "siblingFile.h"
#include "utConcat.h"

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
            say_once(ut_concat("\"", word, "\": not carried over, only textures of materials are"));
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

    void take_libraries(std::string const& rest)
    {
        std::vector<std::string> words;
        for (std::string_view left = rest; !left.empty();)
            words.emplace_back(take_word(left));
        if (words.size() < 2 || is_one_library(rest, words))
            return take_library(rest);
        for (std::string const& word : words)
            take_library(word);
    }

    /// A library's name may have blanks in it, and several may stand in a line. Of several, the last one's name
    /// would be found for the whole line too.
    bool is_one_library(std::string const& rest, std::vector<std::string> const& words) const
    {
        auto const found = [&](std::string const& name) { return find_scene_file(m_path, name).has_value(); };
        return find_scene_file_at(m_path, rest) ||
               (std::none_of(words.begin(), words.end(), found) && found(rest));
    }

    void take_library(std::string const& name)
    {
        if (!m_library_names.insert(name).second)
            return;
        std::string const library = ut_concat("the material library \"", name, "\"");
        std::optional<SceneFile> file = find_scene_file(m_path, name);
        if (!file) {
            std::string const other = std::filesystem::path(m_path).stem().string() + ".mtl";
            file = find_scene_file(m_path, other);
            if (file && m_libraries.contains(file->whole))
                file.reset();
            if (file)
                m_scene.warnings.push_back(
                    ut_concat(library, ": ", no_such_file, "; ", other, " is read in its place"));
        }
        if (file && !m_libraries.insert(file->whole).second)
            return;
        if (file && file->outside)
            m_scene.warnings.push_back(ut_concat(library, " ", taken_from_outside));
        if (!file || !read_mtl_file(file->path, m_scene))
            m_scene.failures.push_back(ut_concat(library, ": ", file ? "it cannot be opened" : no_such_file));
    }

    void say_undefined()
    {
        std::set<std::string_view> defined;
        for (SceneMaterial const& material : m_scene.materials)
            defined.insert(material.name);
        for (std::string const& name : m_uses)
            if (!defined.contains(name))
                m_scene.failures.push_back(ut_concat(
                    "material \"", name, "\": not carried over, no material library that was read has it"));
    }

    void say_once(std::string words)
    {
        if (m_said.insert(words).second)
            m_scene.warnings.push_back(std::move(words));
    }

    std::string m_path;
    Scene& m_scene;
    std::vector<std::string> m_uses; ///< the materials that surfaces have
    std::set<std::string> m_known_uses;
    std::set<std::string> m_library_names; ///< those that came so far
    std::set<std::string> m_libraries;     ///< the files that were read; one may have many names
    std::set<std::string> m_said;
};

} // namespace

bool read_obj_scene(std::string const& path, Scene& scene, std::string& reason)
{
    return ObjReader(path, scene).read(reason);
}

} // namespace mrtool
