// What stands in an image cache file.
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

/// A line of an image cache file: two numbers with a space between them. One that is missing or no number is 0.
struct MR_API mrCacheLine
{
    int first = 0;
    int second = 0;
    bool two_fields = false;   ///< whether there is something on both sides of the first space
    bool two_integers = false; ///< whether both are integers

    explicit mrCacheLine(std::string_view line = {});
    /// The line of two numbers, with its line feed.
    static std::string print(int first, int second);
};

/// The contents of an image cache file, before a cache takes them: the one description of that format. Safe for
/// untrusted input: the limits are those of max_line and of mrReadLimits.
///
/// The lines and the images of a file belong together by rank: the image of the rank gives the hash value, its title,
/// the line of the rank the age.
class MR_API mrImageCacheFile
{
public:
    /// Characters of the longest line.
    static constexpr int max_line = 1023;

    /// The hash value of an image, from its title.
    /// @return 1, or 0 with @p hash 0 when the title is no integer
    static int parse_hash(utString const& title, int& hash);

    /// Reads a file into a new object. What was read before a fault stays.
    /// @param keep_pixels  whether images() keeps the images and not only their sizes
    /// @param fault        receives what is wrong and where, when the status is not mrFileMatReadOK
    /// @param remarks      where not null, receives what of the images is passed over
    /// @return mrFileMatReadOK, mrFileMatOpenFailed, or mrFileMatBadContent: a line is too long, the empty line after
    ///         the entries is missing, an image cannot be read, or there is not enough memory
    mrFileMatReadStatus read(mrSource const& source, mrReadLimits const& limits, bool keep_pixels,
                             mrFault& fault, mrFaultcoDList* remarks = nullptr);

    /// Size limit and shrinkage.
    mrCacheLine const& limits() const { return m_limits; }
    /// Hash value and age of each entry; the line of rank r is line r + 2 of the file.
    coDList<mrCacheLine> const& lines() const { return m_lines; }
    /// The images by their titles, each in the place of the first of its title, the last one read of it.
    coTable<utString, mrBlockImage> const& images() const { return m_images; }

private:
    mrFileMatReadStatus read_parts(std::FILE* file, mrReadLimits const& limits, bool keep_pixels,
                                   mrFault& fault, mrFaultcoDList* remarks);
    int read_text(std::istream& in, mrFault& fault);

    mrCacheLine m_limits;
    coDList<mrCacheLine> m_lines;
    coTable<utString, mrBlockImage> m_images{mrInitialSize, mrFillLimit};
};
