// What is to be said of a scene and of what was made of it.
#pragma once

#include "scExport.h"

#include <cstddef>
#include <string>
#include <vector>

/// What a note means to whoever gets it.
enum scNoteKind : unsigned char
{
    scNoteFailed,   ///< something could not be read; the result lacks it
    scNoteReported, ///< what a reader of another's said
    scNoteChanged,  ///< carried over otherwise than the scene has it
    scNoteOutside,  ///< a file outside of the scene's folder was read: see scTextures
    scNoteLeftOut   ///< not carried over, since there is no place for it
};

/// One thing to be said, as data.
///
/// Notes of one sort have the same pattern, so that a caller can count them, or translate them by a table from
/// pattern to pattern. What changes from one note to the next are the arguments, names and paths of the scene among
/// them: bytes of a stranger's choice, not safe for a terminal as they are.
struct SC_API scNote
{
    /// Bytes of the longest words().
    static constexpr std::size_t max_words = 4096;
    /// Of one kind, one material has so many notes at most; one more then tells the number of the others.
    static constexpr std::size_t max_notes = 100;

    scNoteKind kind = scNoteFailed;
    std::string pattern;                ///< "the roughness of %1 is taken as %2"
    std::vector<std::string> arguments; ///< for %1 to %9, each a few bytes longer than max_words at most

    /// The pattern with the arguments in their places. What is longer than max_words is cut between characters and
    /// ends in " ... (cut)".
    std::string words() const;

    /// Whether one of the notes says that something could not be read.
    static bool any_failed(std::vector<scNote> const& notes);

    /// The words of a material's notes: a line for each, and at the end one line for all that is left out.
    static std::vector<std::string> lines(std::vector<scNote> const& notes);
};
