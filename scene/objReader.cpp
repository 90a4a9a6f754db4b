#include "readers.h"

#include "objStatements.h"
#include "siblingFile.h"

#include <cerrno>
#include <cstring>
#include <filesystem>
#include <set>

namespace sc {

namespace {

class ObjReader
{
public:
    explicit ObjReader(std::string const& path) : m_path(path) {}

    Expected<scScene> read()
    {
        errno = 0;
        ObjStatements statements(m_path);
        if (!statements.good())
            return because(std::strerror(errno));
        bool known = false;
        ObjStatement statement;
        while (statements.next(statement))
            known = read(statement) || known;
        if (!known)
            return because("no statement of an OBJ file in it");
        note_undefined();
        return std::move(m_scene);
    }

private:
    /// @return whether it is a statement by which an OBJ file is known
    bool read(ObjStatement const& statement)
    {
        std::string const& word = statement.word;
        if (word == "v")
            return read_vertex(statement.rest);
        if (word == "mtllib")
            read_libraries(statement.rest);
        else if (word == "usemtl" && !statement.rest.empty() && m_known_uses.insert(statement.rest).second)
            m_uses.push_back(statement.rest);
        else if (word == "usemap" || word == "maplib")
            note_once(
                make_note(scNoteLeftOut, "\"%1\": not carried over, only textures of materials are", word));
        return word == "mtllib" || word == "usemtl" || word == "f";
    }

    /// Some programs write a colour after a vertex's three coordinates.
    bool read_vertex(std::string_view rest)
    {
        int count = 0;
        while (count < 6 && take_number(rest))
            ++count;
        if (count == 6)
            note_once(make_note(
                scNoteLeftOut,
                "the colours of the vertices: not carried over, a material file has no place for them"));
        return count >= 3;
    }

    void read_libraries(std::string const& rest)
    {
        std::vector<std::string> words;
        for (std::string_view left = rest; !left.empty();)
            words.emplace_back(take_word(left));
        if (words.size() < 2 || is_one_library(rest, words))
            return read_library(rest);
        for (std::string const& word : words)
            read_library(word);
    }

    /// A library's name may have blanks in it, and several may stand in a line. Of several, the last one's
    /// name would be found for the whole line too.
    bool is_one_library(std::string const& rest, std::vector<std::string> const& words) const
    {
        auto const found = [&](std::string const& name) { return find_scene_file(m_path, name).has_value(); };
        return find_scene_file_at(m_path, rest) ||
               (std::none_of(words.begin(), words.end(), found) && found(rest));
    }

    void read_library(std::string const& name)
    {
        if (!m_library_names.insert(name).second)
            return;
        std::optional<SceneFile> file = find_scene_file(m_path, name);
        if (!file)
            file = find_stand_in(name);
        if (!file)
            return note_library(scNoteFailed, name, ": there is no such file");
        if (!m_libraries.insert(file->whole).second)
            return;
        if (file->outside)
            note_library(scNoteOutside, name, " is taken from outside the scene's folder");
        if (!read_mtl_file(file->path, m_scene))
            note_library(scNoteFailed, name, ": it cannot be opened");
    }

    /// The MTL file that is called like the scene, unless it was read already.
    std::optional<SceneFile> find_stand_in(std::string const& name)
    {
        std::string const other = std::filesystem::path(m_path).stem().string() + ".mtl";
        std::optional<SceneFile> file = find_scene_file(m_path, other);
        if (!file || m_libraries.contains(file->whole))
            return std::nullopt;
        m_scene.notes.push_back(make_note(
            scNoteChanged, "the material library \"%1\": there is no such file; %2 is read in its place",
            name, other));
        return file;
    }

    void note_library(scNoteKind kind, std::string const& name, char const* words)
    {
        m_scene.notes.push_back(make_note(kind, ut_concat("the material library \"%1\"", words), name));
    }

    void note_undefined()
    {
        std::set<std::string_view> defined;
        for (scMaterial const& material : m_scene.materials)
            defined.insert(material.name);
        for (std::string const& name : m_uses)
            if (!defined.contains(name))
                m_scene.notes.push_back(make_note(
                    scNoteFailed,
                    "material \"%1\": not carried over, no material library that was read has it", name));
    }

    void note_once(scNote note)
    {
        if (m_said.insert(note.words()).second)
            m_scene.notes.push_back(std::move(note));
    }

    std::string m_path;
    scScene m_scene;
    std::vector<std::string> m_uses; ///< the materials that surfaces have
    std::set<std::string> m_known_uses;
    std::set<std::string> m_library_names; ///< those that came so far
    std::set<std::string> m_libraries;     ///< the files that were read; one may have many names
    std::set<std::string> m_said;
};

} // namespace

Expected<scScene> read_obj(std::string const& path)
{
    return ObjReader(path).read();
}

} // namespace sc
