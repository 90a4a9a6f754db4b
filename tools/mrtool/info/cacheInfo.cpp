#include "fileInfo.h"

#include "mrFault.h"
#include "mrImageCache.h"
#include "mrImageCacheFile.h"
#include "mrSource.h"
#include "utConcat.h"

#include <algorithm>
#include <ctime>
#include <map>
#include <utility>

namespace mrtool {

namespace {

constexpr std::size_t most_warnings = 100;

/// Adds warnings to a list. Counts those beyond the first hundred and adds their number at the end.
class Warnings
{
public:
    explicit Warnings(std::vector<std::string>& texts) : m_texts(texts) {}
    ~Warnings()
    {
        if (m_more > 0)
            m_texts.push_back(ut_concat("and ", m_more, " more"));
    }
    Warnings(Warnings const&) = delete;
    Warnings& operator=(Warnings const&) = delete;

    template <class... Parts>
    void add(Parts const&... parts)
    {
        if (m_texts.size() < most_warnings)
            m_texts.push_back(ut_concat(parts...));
        else
            ++m_more;
    }

private:
    std::vector<std::string>& m_texts;
    std::size_t m_more = 0;
};

void check_limits(mrCacheLine const& limits, Warnings& warnings)
{
    int const size = limits.first;
    int const shrinkage = limits.second;
    if (!limits.two_integers)
        warnings.add("line 1: not two integers; one that is missing or none counts as 0");
    if (size <= 0)
        warnings.add("line 1: the size limit ", size, " is not above 0");
    if (shrinkage >= size)
        warnings.add("line 1: the shrinkage ", shrinkage, " is not below the size limit ", size);
    if (shrinkage <= 0)
        warnings.add("line 1: the shrinkage ", shrinkage,
                     " is not above 0; the cache may grow past its size limit");
}

void check_lines(coDList<mrCacheLine> const& lines, Warnings& warnings)
{
    int number = 1;
    for (mrCacheLine const& line : lines) {
        ++number;
        if (!line.two_integers)
            warnings.add("line ", number, ": not two integers; one that is missing or none counts as 0");
        else if (line.second <= 0)
            warnings.add("line ", number, ": the age ", line.second, " is not above 0");
    }
}

/// Enters images into the contents as the library enters them into a cache, but without evictions.
class Entries
{
public:
    Entries(CacheContents& contents, Warnings& warnings) : m_contents(contents), m_warnings(warnings) {}

    /// @param number  of the line in the file
    void add(mrBlockImage const& image, mrCacheLine const& line, int number)
    {
        CacheContents::Entry entry{0, line.second, std::string(image.name.view()), image.width, image.height};
        bool const is_hash = mrImageCacheFile::parse_hash(image.title, entry.hash) != 0;
        if (!is_hash)
            m_warnings.add("the image title ", ut_quote(image.title.view()),
                           " is no hash value and counts as 0");
        if (is_hash && entry.hash == 0)
            m_warnings.add(
                "line ", number,
                ": its image has the hash value 0, which the library reports when it is looked up");
        if (line.two_integers && line.first != entry.hash)
            m_warnings.add("line ", number, ": the hash value is ", line.first,
                           ", but the image in its place has ", entry.hash, ", which gets this age");
        // The first entry evicts nothing, whatever the limit.
        m_evicts |= static_cast<int>(m_contents.entries.size()) >= std::max(m_contents.max_cache_size, 1);
        auto const [place, is_new] = m_places.try_emplace(entry.hash, m_contents.entries.size());
        if (is_new)
            return m_contents.entries.push_back(std::move(entry));
        m_warnings.add("two images have the hash value ", entry.hash, "; the later one replaces the earlier");
        m_contents.entries[place->second] = std::move(entry);
    }

    /// Whether the library may evict an entry.
    bool may_evict() const { return m_evicts; }

private:
    CacheContents& m_contents;
    Warnings& m_warnings;
    std::map<int, std::size_t> m_places; ///< from hash value to entry
    bool m_evicts = false;
};

void check_counts(std::size_t lines, std::size_t images, Warnings& warnings)
{
    if (images < lines)
        warnings.add("more lines (", lines, ") than images (", images, "); the last lines are left out");
    if (images > lines)
        warnings.add("more images (", images, ") than lines (", lines, "); the last images are left out");
}

void enter_images(mrImageCacheFile const& file, CacheContents& contents, Warnings& warnings)
{
    Entries entries(contents, warnings);
    auto line = file.lines().begin();
    int number = 1;
    for (auto const& [title, image] : file.images())
        if (line != file.lines().end())
            entries.add(image, *line++, ++number);
    check_counts(file.lines().size(), file.images().size(), warnings);
    if (entries.may_evict())
        warnings.add("there are at least as many entries as the size limit (", contents.max_cache_size,
                     ") before the last image is entered; reading it may evict some");
}

} // namespace

void read_contents(mrSource const& source, FileInfo& info, CacheContents& contents)
{
    mrImageCacheFile file;
    mrFault fault;
    mrFaultcoDList remarks;
    info.status = file.read(source, {}, false, fault, &remarks);
    info.fault = (fault.line > 0 ? fault.reason : fault.words()).view();
    info.line = fault.line;
    if (!info.is_read())
        return;
    contents.max_cache_size = file.limits().first;
    contents.shrinkage = file.limits().second;
    Warnings warnings(info.warnings);
    check_limits(file.limits(), warnings);
    check_lines(file.lines(), warnings);
    for (mrFault const& remark : remarks)
        warnings.add(remark.words());
    enter_images(file, contents, warnings);
}

std::string format_age(int age)
{
    std::time_t const time = mrImageCache::start_of_ages() + age;
    std::tm local{};
    localtime_r(&time, &local);
    char words[32];
    return {words, std::strftime(words, sizeof words, "%Y-%m-%d %H:%M:%S", &local)};
}

} // namespace mrtool
