// The results and the notes of readers.
#pragma once

#include "scScene.h"
#include "utConcat.h"
#include "utUTF8.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <tl/expected.hpp>
#include <unordered_set>

namespace sc {

/// A value, or the reason for a failure in words.
template <class T>
using Expected = tl::expected<T, std::string>;

inline tl::unexpected<std::string> because(std::string reason)
{
    return tl::unexpected<std::string>(std::move(reason));
}

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

/// A value that is left out, and the two numbers at which it makes no difference.
struct LeftOutValue
{
    std::string_view key;
    char const* words;
    double neutral;
    double also_neutral;

    bool makes_no_difference(auto const* values, std::size_t count) const
    {
        auto const all = [=](double same) {
            return std::all_of(values, values + count, [=](double each) { return each == same; });
        };
        return all(neutral) || all(also_neutral);
    }
};

/// A map that is left out.
template <class Key>
struct LeftOutMap
{
    Key key;
    char const* words;
};

/// @return the row of the table with that key, or null
template <class Row, std::size_t Size, class Key>
Row const* find_row(Row const (&table)[Size], Key const& key)
{
    auto const found =
        std::find_if(std::begin(table), std::end(table), [&](Row const& each) { return each.key == key; });
    return found == std::end(table) ? nullptr : found;
}

/// Brings the names and paths of a scene within their bounds and its notes into order.
void settle(scScene& scene);

} // namespace sc
