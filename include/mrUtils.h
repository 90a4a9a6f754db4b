// Image blocks, hashes for files and definitions, palette files.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"
#include "mrReadLimits.h"
#include "mrTypes.h"

#include <cstdint>
#include <iosfwd>

class giColour;
class mrSource;
class mrTarget;

class MR_API mrUtils
{
public:
    /// Appends the images of the table to a file, one PNG image after the other, each with two text entries:
    /// "Title", its key in the table, and "DuctImageName", its own name. Characters that XML cannot carry
    /// are written as their pictures, as in a document, so that a title stays the name that layers use. An empty table
    /// touches no file.
    /// @return 1, or 0 at the first image that is null or cannot be written, with those before it in the file; or 0
    ///         with the file untouched when two images would have one title: see mrImageBlock::check_titles
    static int write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, utString const& path);

    /// Reads the images that stand end to end from a position to the end of the file. Fewer than ten bytes
    /// count as the end. Safe for untrusted input: see mrReadLimits and gxPNGReaderDuctImage.
    ///
    /// An image is stored under its "Title", with one reference, which the table's owner releases. It replaces an
    /// image of the same title, which is released. An image without a title is dropped.
    /// @param start  bytes from the beginning of the file; none below 0 can be read. For those beyond an int there is
    ///               the overload below
    /// @return 1, or 0 when the file cannot be opened or read, its bytes are no image, or an image has too many pixels
    ///         or needs too much memory; the table keeps the images stored before
    static int read_images(utString const& path, int start,
                           utStringdgDuctImagecoTablePtrcoPtrcoTable& images);

    // The same for any target or source, with the reason for a failure.

    /// @param fault  receives the image that cannot be written and the reason, when the result is 0
    static int write_images(utStringdgDuctImagecoTablePtrcoPtrcoTable const& images, mrTarget const& target,
                            mrFault& fault);

    /// @param fault    receives the reason and the place of a failure
    /// @param remarks  unless null, receives what was left out: see mrImageBlock::read_titled
    static int read_images(mrSource const& source, std::int64_t start,
                           utStringdgDuctImagecoTablePtrcoPtrcoTable& images, mrReadLimits const& limits,
                           mrFault& fault, mrFaultcoDList* remarks = nullptr);

    // Both hashes can be keys of an mrImageCache. Each takes the remainder by 255 of three parts, with the sign of the
    // part, and joins them: high << 16 | middle << 8 | low. Parts from 0 make a hash below 2^24; a part below 0 sets
    // every bit above its place. Characters are added up as -128 to 127.

    /// Hashes the path's characters (high), the six numbers of the date of the last change added up (middle) and the
    /// size (low). The file is not opened. Different paths of one file may have different hashes. A file that is
    /// written again with the same size within the same second keeps its hash. May throw std::bad_alloc.
    /// @param path  date and size of a missing file count as 0
    /// @report "argument out of range | Args" when nothing has that path
    static unsigned int file_hash(utString const& path);

    /// Hashes the two numbers (high and middle) and the text's characters (low).
    /// @report "argument out of range | Args" when @p first is below 0
    /// @report "argument out of range | Args" when @p second is below 0
    /// @report "argument out of range | Args" when @p text is empty
    static unsigned int symbol_defn_hash(int first, int second, utString text);

    /// Turns letters into small ones, by the current locale's rule for single characters, and back slashes into "/".
    /// Repeated separators, "." and ".." stay.
    /// @report "Args" when @p path is empty
    static void standardize_path_name(utString& path);

    /// Calculates a colour from the values of its encoding, in the order of mrColourEncoding, with a fourth byte of 0.
    /// Any value is taken: rgb8 and cmy8 values and the channels made of cmyk values are truncated towards zero (beyond
    /// an int, to 0), and their low eight bits are used.
    /// @report "Invalid format!" for mrColourEncodingNone, and then the last of these too
    /// @report "Expected 3 component values!" for rgb8 or cmy8 with another count; further values are ignored,
    ///         missing ones are 0, each with the report of coDList
    /// @report "Expected 4 component values!" for cmyk likewise; the others are not read when black is exactly 100
    /// @report "unknown enumerator constant | Invalid format!" for any other encoding; @p colour is untouched
    static void colour_from_components(mrColourEncoding encoding, doublecoDList& values, giColour& colour);

    /// Characters of the longest line of a palette file.
    static constexpr int max_palette_line = 1023;

    /// The word that begins the lines of an encoding in a palette file: "rgb8", "cmy8" or "cmyk".
    /// @return null for any other encoding
    static char const* find_palette_keyword(mrColourEncoding encoding);

    /// Appends the colours of a palette file, one a line:
    ///
    ///     rgb8 RED GREEN BLUE [NAME]             0 to 255 each
    ///     cmy8 CYAN MAGENTA YELLOW [NAME]        0 to 255 each
    ///     cmyk CYAN MAGENTA YELLOW BLACK [NAME]  0 to 100 each
    ///
    /// Only spaces separate; spaces around a line and around a name are dropped. The space before a name may be missing;
    /// a tab belongs to the name. "#" begins a comment up to the line's end; lines that are empty without it are
    /// skipped. A carriage return may end a line with a colour; alone it is no colour and no empty line. A NUL ends any
    /// line early. A line of 1,024 characters or more ends the reading as the end of the input does. So does a failing
    /// stream, which throws nothing meanwhile. Safe for untrusted input.
    /// @return the status of the first line in error, where the reading ends; the palette keeps the colours of the
    ///         lines before. mrPaletteFileBadFormat also when memory runs out
    /// @report "argument out of range | Args" when the palette is not empty; its colours stay, and their names count
    ///         as taken
    /// @report "Invalid matcher!" when memory runs out for an expression; "Expected rgb8!", "Expected cmy8!" or
    ///         "Expected cmyk!" when an expression matches another keyword, which cannot happen
    static mrPaletteFileError read_pcp(std::istream& in, mrColourPalette& palette);

    /// The same for any source, with the reason for a failure.
    /// @param fault  receives the line in error and the reason; with mrPaletteFileOK, what ended the reading too early:
    ///               a line that is too long, or, without a line, a failure to read
    /// @return also mrPaletteFileOpenFailed
    static mrPaletteFileError read_pcp(mrSource const& source, mrColourPalette& palette, mrFault& fault);

    /// Writes each colour in a line "rgb8 RED GREEN BLUE NAME", whatever its encoding, and flushes the stream
    /// after it. Names are written as they are. A name is not read back the same if it has "#", a NUL, a line end or
    /// spaces at an end, is empty, or is too long for a line; the second colour of one name ends the reading. The state
    /// of @p out shows a failure, and becomes bad (std::ios::badbit) without enough memory; it throws if it was set to.
    /// @return @p out
    static std::ostream& write_pcp(mrColourPalette const& palette, std::ostream& out);
};
