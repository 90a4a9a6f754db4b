// The contents of an image cache file.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrFault.h"
#include "mrImageBlock.h"
#include "mrTypes.h"

#include <iosfwd>
#include <string>
#include <string_view>

class mrSource;

/// A line of an image cache file: two integers with a space between them. One that is missing or no integer is 0.
struct MR_API mrCacheLine
{
    int first = 0;
    int second = 0;
    bool two_fields = false;   ///< whether both sides of the first space hold text
    bool two_integers = false; ///< whether both fields are integers

    explicit mrCacheLine(std::string_view line = {});
    /// Makes a line, with its line feed.
    static std::string print(int first, int second);
};

/// The contents of an image cache file, before a cache takes them. Safe for untrusted input: see max_line and
/// mrReadLimits for the limits.
///
/// Lines and images belong together by rank: an entry has its hash value from the title of the image, its age from the
/// line.
class MR_API mrImageCacheFile
{
public:
    /// Characters of the longest line.
    static constexpr int max_line = 1023;

    /// Parses the hash value in an image's title.
    /// @return 1, or 0 with @p hash 0 when the title is no integer
    static int parse_hash(utString const& title, int& hash);

    /// Reads a file into a new object. The part read before a fault stays.
    /// @param keep_pixels  whether images() keeps the images or only their sizes
    /// @param fault        receives the reason and the place when the status is not mrFileMatReadOK
    /// @param remarks      unless null, receives what was left out: see mrImageBlock::read_titled
    /// @return mrFileMatReadOK, mrFileMatOpenFailed, or mrFileMatBadContent: a line is too long, the empty line after
    ///         the entries is missing, an image cannot be read, or memory runs out
    mrFileMatReadStatus read(mrSource const& source, mrReadLimits const& limits, bool keep_pixels,
                             mrFault& fault, mrFaultcoDList* remarks = nullptr);

    /// Size limit and shrinkage.
    mrCacheLine const& limits() const { return m_limits; }
    /// Whether the first line was read, whatever it holds.
    bool has_limits() const { return m_has_limits; }
    /// Hash value and age of each entry; the line of rank r is line r + 2 of the file.
    coDList<mrCacheLine> const& lines() const { return m_lines; }
    /// The images by title. Of one title, the last image in the place of the first.
    coTable<utString, mrBlockImage> const& images() const { return m_images; }

private:
    mrFileMatReadStatus read_parts(std::FILE* file, mrReadLimits const& limits, bool keep_pixels,
                                   mrFault& fault, mrFaultcoDList* remarks);
    int read_text(std::istream& in, mrFault& fault);

    mrCacheLine m_limits;
    bool m_has_limits = false;
    coDList<mrCacheLine> m_lines;
    coTable<utString, mrBlockImage> m_images{mrInitialSize, mrFillLimit};
};
