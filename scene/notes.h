// Making notes, and how much text is taken out of a scene.
#pragma once

#include "scScene.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <map>
#include <unordered_set>

namespace sc {

inline constexpr char no_such_file[] = "there is no such file";

/// Writes an argument of a note. Keeps enough of a long text for words() to find the note too long.
template <class T>
std::string make_argument(T const& value)
{
    std::string text = ut_concat(value);
    text.resize(utUTF8::cut(text, scNote::max_words + 4).size());
    return text;
}

template <class... Arguments>
scNote make_note(scNoteKind kind, std::string pattern, Arguments const&... arguments)
{
    return {kind, std::move(pattern), {make_argument(arguments)...}};
}

/// Notes that something of a name was left out: WORDS "NAME".
/// @param name  may be empty
scNote make_left_out(std::string const& words, std::string const& name);

/// Collects the notes of one material, each once.
class NoteList
{
public:
    void add(scNote note);

    template <class... Arguments>
    void add(scNoteKind kind, std::string pattern, Arguments const&... arguments)
    {
        add(make_note(kind, std::move(pattern), arguments...));
    }

    /// @return what failed, what changed and what is left out, each in the order in which it came: max_notes
    ///         notes and the number of the others
    std::vector<scNote> finish();

private:
    struct Kind
    {
        std::vector<scNote> notes;
        std::size_t more = 0;
    };

    std::map<int, Kind> m_kinds;
    std::unordered_set<std::string> m_known;
};

/// Brings the names and paths of a scene within their bounds and its notes into order.
void settle(scScene& scene);

} // namespace sc
