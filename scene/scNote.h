// Notes on a scene and on the materials made of it.
#pragma once

#include "scExport.h"

#include <cstddef>
#include <string>
#include <vector>

/// The weight of a note.
enum scNoteKind : unsigned char
{
    scNoteFailed,   ///< something could not be read; the result lacks it
    scNoteReported, ///< a message of Assimp, in its words
    scNoteChanged,  ///< carried over otherwise than the scene has it
    scNoteOutside,  ///< a file outside of the scene's folder was read: see scTextures
    scNoteLeftOut   ///< not carried over: a material file has no place for it
};

/// One thing to be said, as data.
///
/// Notes of one sort have the same pattern. So a caller can count them, or translate them by a table from
/// pattern to pattern. The arguments hold what differs: numbers, names and paths. These are bytes of a
/// stranger's choice, so escape them before they go to a terminal. Making texts of them may throw std::bad_alloc.
struct SC_API scNote
{
    /// Bytes of the longest words().
    static constexpr std::size_t max_words = 4096;
    /// The most notes that one material has of one kind. One more tells how many others there were.
    static constexpr std::size_t max_notes = 100;

    scNoteKind kind = scNoteFailed;
    std::string pattern;                ///< "the roughness of %1 is taken as %2"
    std::vector<std::string> arguments; ///< for %1 to %9; each has at most max_words + 4 bytes

    /// The pattern with the arguments in their places. A longer text than max_words is cut between
    /// characters and ends in " ... (cut)".
    std::string words() const;

    /// Whether one of the notes says that something could not be read.
    static bool any_failed(std::vector<scNote> const& notes);

    /// The words of a material's notes: a line for each, but one line at the end for all that is left out:
    /// "not carried over, a material file has no place for it: the sheen, the bump map \"a.png\"".
    static std::vector<std::string> lines(std::vector<scNote> const& notes);
};
