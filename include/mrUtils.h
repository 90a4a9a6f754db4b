// The images that follow a document in a file, keys for files and definitions, palette files.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"
#include "mrTypes.h"

#include <cstdint>
#include <iosfwd>

class giColour;
class mrColourPalette;
class mrSource;
class mrTarget;
class utString;
struct mrReadLimits;

/// Functions that need no object.
class MR_API mrUtils
{
public:
    /// Appends the images of the table to a file, one PNG image after the other, each with two text entries:
    /// "Title", its key in the table, and "DuctImageName", its own name. Characters that XML cannot carry
    /// are written as "?", as in a document, so that a key stays that of the layers which name it.
    /// @return 1, or 0 at the first image that is null or cannot be written; those before it stay in the
    ///         file. An empty table touches no file
    static int write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, utString const& path);

    /// Reads the images that stand end to end from a position on to the end of the file. Fewer than ten bytes
    /// count as that end. Safe for untrusted input: see mrReadLimits and gxPNGReaderDuctImage.
    ///
    /// An image is stored under its "Title", with one reference, which the table's owner releases; one of the
    /// same title gives way and is released. An image without a title is dropped.
    /// @param start  bytes from the beginning of the file
    /// @return 1, or 0 when the file cannot be opened or read, or something in it is no image or asks for too
    ///         many pixels or more memory than there is; the table keeps the images stored before
    static int read_images(utString const& path, int start,
                           utStringdgDuctImagecoTablePtrcoPtrcoTable& images);

    // The same to and from anywhere, with words for what goes wrong.

    /// @param fault  receives which image cannot be written and why, when the result is 0
    static int write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, mrTarget const& target,
                            mrFault& fault);

    /// @param fault    receives what is wrong and where, when the result is 0
    /// @param remarks  where not null, receives what is passed over: see mrImageBlock::read_titled
    static int read_images(mrSource const& source, std::int64_t start,
                           utStringdgDuctImagecoTablePtrcoPtrcoTable& images, mrReadLimits const& limits,
                           mrFault& fault, mrFaultcoDList* remarks = nullptr);

    // The two hashes are of the kind that mrImageCache takes. Each joins three parts, high, middle and low,
    // of which it takes the remainder by 255, with the sign of the part: high << 16 | middle << 8 | low. So
    // parts of 0 and more make a hash below 2^24, and one below 0 sets every bit above its own place. The
    // characters of a text are added up as -128 to 127.

    /// A hash of the path's characters (high), of the six numbers of the date on which the file was changed
    /// last (middle) and of its size (low). The file is not opened. One file may have different hashes
    /// by different paths; and it keeps its hash when it is written again with the same size within the same
    /// second.
    /// @param path  of a file that is not there: date and size count as 0
    /// @report "argument out of range | Args" when there is nothing of that path
    static unsigned int file_hash(utString const& path);

    /// A hash of the two numbers (high and middle) and of the text's characters (low).
    /// @report "argument out of range | Args" when @p first is below 0
    /// @report "argument out of range | Args" when @p second is below 0
    /// @report "argument out of range | Args" when @p text is empty
    static unsigned int symbol_defn_hash(int first, int second, utString text);

    /// Turns the path into small letters, as the current locale has them for single characters, and its back
    /// slashes into "/". Nothing else is made alike: repeated separators, "." and ".." stay.
    /// @report "Args" when @p path is empty
    static void standardize_path_name(utString& path);

    /// Works out a colour from the values of its encoding, in the order that mrColourEncoding names them,
    /// with a fourth byte of 0. No value is out of range: rgb8 and cmy8 values and the channels that cmyk
    /// values make are truncated towards zero (to 0 where that fits no int), then their low eight bits count.
    /// @report "Invalid format!" for mrColourEncodingNone, and then the last of these too
    /// @report "Expected 3 component values!" for rgb8 or cmy8 with another count; values beyond are left
    ///         out, those missing are 0, each with the report of coDList
    /// @report "Expected 4 component values!" for cmyk likewise; with black of exactly 100 the others are not
    ///         asked for
    /// @report "unknown enumerator constant | Invalid format!" for any other encoding; @p colour is untouched
    static void colour_from_components(mrColourEncoding encoding, doublecoDList& values, giColour& colour);

    /// Characters of the longest line of a palette file.
    static constexpr int max_palette_line = 1023;

    /// Appends the colours of a palette file, a line each:
    ///
    ///     rgb8 RED GREEN BLUE [NAME]             0 to 255 each
    ///     cmy8 CYAN MAGENTA YELLOW [NAME]        0 to 255 each
    ///     cmyk CYAN MAGENTA YELLOW BLACK [NAME]  0 to 100 each
    ///
    /// Only spaces separate; those around a line and around a name do not count. "#" begins a comment up to
    /// the line's end; lines without anything else are passed over. A carriage return may end a line that has
    /// a colour, and a NUL ends what counts of a line. A line of 1,024 characters or more ends the reading as
    /// the end of the input does, and so does a stream that fails, which throws nothing meanwhile. Safe for
    /// untrusted input.
    /// @return that of the first line in error, which is the last one read; the palette keeps the colours of
    ///         those before it. mrPaletteFileBadFormat also where the colours need more memory than there is
    /// @report "argument out of range | Args" when the palette is not empty; its colours stay, and their
    ///         names cannot come again
    /// @report "Invalid matcher!" when there is not enough memory for an expression, "Expected rgb8!",
    ///         "Expected cmy8!" or "Expected cmyk!" should one match another keyword, which none does
    static mrPaletteFileError read_pcp(std::istream& in, mrColourPalette& palette);

    /// The same from anywhere, with words for what goes wrong.
    /// @param fault  receives the line and what is wrong with it. With mrPaletteFileOK, a line that is too long, at which
    ///               the reading ended
    /// @return also mrPaletteFileOpenFailed, and mrPaletteFileBadFormat when reading fails before the end
    static mrPaletteFileError read_pcp(mrSource const& source, mrColourPalette& palette, mrFault& fault);

    /// Writes each colour in a line "rgb8 RED GREEN BLUE NAME", whatever its encoding, and flushes the stream
    /// after it. Names are written as they are: one with "#", NUL or a line end, with spaces around it, or
    /// too long for a line is not read back as it was. How the writing went is for @p out to tell, which
    /// throws where it was told to.
    /// @return @p out
    static std::ostream& write_pcp(mrColourPalette const& palette, std::ostream& out);
};
