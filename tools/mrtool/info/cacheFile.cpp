#include "cacheFile.h"

#include "imageBlock.h"
#include "inputFile.h"
#include "messages.h"
#include "utConcat.h"

#include "mrImageCache.h"

#include "utString.h"

#include <algorithm>
#include <ctime>
#include <limits>
#include <map>
#include <utility>

namespace mrtool {

namespace {

constexpr std::size_t most_warnings = 100;

/// The two numbers of a line; one that is missing or none is 0, as in the library.
struct Numbers
{
    int first = 0;
    int second = 0;
    bool both = false; ///< whether both are numbers
};

Numbers numbers_of(std::string_view line)
{
    Numbers numbers;
    std::size_t const space = std::min(line.find(' '), line.size());
    std::size_t const rest = std::min(line.find_first_not_of(' ', space), line.size());
    int const first = utString(line.substr(0, space)).parse(numbers.first);
    int const second = utString(line.substr(rest)).parse(numbers.second);
    numbers.both = first && second;
    return numbers;
}

/// An image as the library finds it: under its title, in the place of the first one of that title.
std::vector<BlockImage const*> images_by_title(ImageBlock const& block)
{
    std::vector<BlockImage const*> images;
    std::map<std::string_view, std::size_t> places;
    for (BlockImage const& image : block.images) {
        if (image.title.empty())
            continue;
        auto const [place, is_new] = places.try_emplace(image.title, images.size());
        if (is_new)
            images.push_back(&image);
        else
            images[place->second] = &image;
    }
    return images;
}

/// One file on its way into contents and an outcome.
class Reader
{
public:
    Reader(std::string const& path, CacheContents& contents) : m_path(path), m_contents(contents) {}

    ReadOutcome read();

private:
    bool next_line();
    void read_limits();
    void read_lines();
    void read_images();
    void pair(std::vector<BlockImage const*> const& images);
    void enter(BlockImage const& image, std::size_t rank);
    void check_counts(std::size_t images);
    void warn(std::string words);
    void fail(std::string fault, long line = 0);

    std::string const& m_path;
    CacheContents& m_contents;
    ReadOutcome m_outcome;
    std::size_t m_more_warnings = 0;
    std::ifstream m_in;
    std::string m_line;
    long m_line_number = 0;
    std::vector<Numbers> m_lines;        ///< hash value and age, as they stand
    std::map<int, std::size_t> m_places; ///< of the entries, by their hash values
    bool m_evicts = false;               ///< whether the library may evict an entry
};

ReadOutcome Reader::read()
{
    m_in = open_input(m_path, m_outcome.fault);
    if (!m_in)
        return std::move(m_outcome);
    m_outcome.status = mrFileMatReadOK;
    read_limits();
    if (m_outcome.read())
        read_lines();
    if (m_outcome.read())
        read_images();
    if (m_more_warnings > 0)
        m_outcome.warnings.push_back(ut_concat("and ", m_more_warnings, " more"));
    return std::move(m_outcome);
}

/// @return false, after a fault, where the library goes no further
bool Reader::next_line()
{
    char buffer[mrImageCache::max_line + 1];
    m_in.getline(buffer, sizeof buffer);
    ++m_line_number;
    auto const count = static_cast<std::size_t>(m_in.gcount());
    m_line.assign(buffer, m_in.good() ? count - 1 : count);
    if (m_in)
        return true;
    if (m_in.bad())
        fail("reading it failed before its end");
    else if (m_in.eof())
        fail("the file ends here, without the empty line that ends the entries",
             std::max(m_line_number - 1, 1l));
    else
        fail("longer than 1,023 characters", m_line_number);
    return false;
}

void Reader::read_limits()
{
    if (!next_line())
        return;
    Numbers const numbers = numbers_of(m_line);
    m_contents.max_cache_size = numbers.first;
    m_contents.shrinkage = numbers.second;
    if (!numbers.both)
        warn("line 1: not two integers; one that is missing or none counts as 0");
    if (numbers.first <= 0)
        warn(ut_concat("line 1: the size limit ", numbers.first, " is not above 0"));
    if (numbers.second >= numbers.first)
        warn(ut_concat("line 1: the shrinkage ", numbers.second, " is not below the size limit ",
                       numbers.first));
    if (numbers.second <= 0)
        warn(ut_concat("line 1: the shrinkage ", numbers.second,
                       " is not above 0; the cache may grow past its size limit"));
}

void Reader::read_lines()
{
    while (next_line() && !m_line.empty()) {
        Numbers const numbers = numbers_of(m_line);
        m_lines.push_back(numbers);
        if (!numbers.both)
            warn(ut_concat("line ", m_line_number,
                           ": not two integers; one that is missing or none counts as 0"));
        else if (numbers.second <= 0)
            warn(ut_concat("line ", m_line_number, ": the age ", numbers.second, " is not above 0"));
    }
}

void Reader::read_images()
{
    std::streamoff const start = m_in.tellg();
    if (start > std::numeric_limits<int>::max())
        return fail("the images begin past byte 2,147,483,647");
    ImageBlock const block = read_image_block(m_path, static_cast<long>(start));
    if (!block.fault.empty())
        return fail(block.fault);
    std::vector<std::string> warnings;
    check_images(block, warnings);
    for (std::string& warning : warnings)
        warn(std::move(warning));
    pair(images_by_title(block));
}

/// Ages and images go together by rank, whatever hash values the lines have.
void Reader::pair(std::vector<BlockImage const*> const& images)
{
    std::size_t const count = std::min(images.size(), m_lines.size());
    for (std::size_t rank = 0; rank < count; ++rank)
        enter(*images[rank], rank);
    check_counts(images.size());
}

void Reader::enter(BlockImage const& image, std::size_t rank)
{
    Numbers const& line = m_lines[rank];
    CacheEntry entry{0, line.second, image.name, image.width, image.height};
    bool const is_hash = utString(image.title).parse(entry.hash) != 0;
    if (!is_hash)
        warn(ut_concat("the image title ", in_quotes(image.title), " is no hash value and counts as 0"));
    if (is_hash && entry.hash == 0)
        warn(ut_concat("line ", rank + 2,
                       ": its image has the hash value 0, which the library reports when it is looked up"));
    if (line.both && line.first != entry.hash)
        warn(ut_concat("line ", rank + 2, ": the hash value is ", line.first,
                       ", but the image in its place has ", entry.hash, ", which gets this age"));
    // Out of an empty cache nothing is evicted, whatever the limit.
    m_evicts |= static_cast<int>(m_contents.entries.size()) >= std::max(m_contents.max_cache_size, 1);
    auto const [place, is_new] = m_places.try_emplace(entry.hash, m_contents.entries.size());
    if (is_new)
        return m_contents.entries.push_back(std::move(entry));
    warn(ut_concat("two images have the hash value ", entry.hash, "; the later one replaces the earlier"));
    m_contents.entries[place->second] = std::move(entry);
}

void Reader::check_counts(std::size_t images)
{
    if (images < m_lines.size())
        warn(ut_concat("more lines (", m_lines.size(), ") than images (", images,
                       "); the last lines are left out"));
    if (images > m_lines.size())
        warn(ut_concat("more images (", images, ") than lines (", m_lines.size(),
                       "); the last images are left out"));
    if (m_evicts)
        warn(ut_concat("there are at least as many entries as the size limit (", m_contents.max_cache_size,
                       ") before the last image is entered; reading it may evict some"));
}

void Reader::warn(std::string words)
{
    if (m_outcome.warnings.size() < most_warnings)
        m_outcome.warnings.push_back(std::move(words));
    else
        ++m_more_warnings;
}

void Reader::fail(std::string fault, long line)
{
    m_outcome.status = mrFileMatBadContent;
    m_outcome.fault = std::move(fault);
    m_outcome.line = line;
}

/// Ages count from here: midnight at the start of 2009, local standard time.
std::time_t start_of_2009()
{
    std::tm date{};
    date.tm_mday = 1;
    date.tm_year = 109;
    return std::mktime(&date);
}

} // namespace

bool is_cache(std::string_view beginning)
{
    return numbers_of(beginning.substr(0, beginning.find('\n'))).both;
}

ReadOutcome read_cache_file(std::string const& path, CacheContents& contents)
{
    return Reader(path, contents).read();
}

std::string local_time(int age)
{
    std::time_t const time = start_of_2009() + age;
    std::tm local{};
    localtime_r(&time, &local);
    char words[32];
    return {words, std::strftime(words, sizeof words, "%Y-%m-%d %H:%M:%S", &local)};
}

} // namespace mrtool
