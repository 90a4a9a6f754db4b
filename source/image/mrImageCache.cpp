#include "mrImageCache.h"

#include "mrImageCacheItem.h"
#include "mrItemKey.h"
#include "mrUtils.h"

#include "dgDuctImage.h"
#include "gxOpenFile.h"
#include "utAssert.h"
#include "utClock.h"
#include "utString.h"

#include <algorithm>
#include <ctime>
#include <fstream>
#include <limits>
#include <memory>
#include <new>
#include <string_view>

namespace {

/// The same bits, signed, as the table and the file have them.
int key_of(unsigned int hash)
{
    return static_cast<int>(hash);
}

std::time_t start_of_2009()
{
    std::tm date{};
    date.tm_mday = 1;
    date.tm_year = 109;
    return std::mktime(&date);
}

// The leak checker knows the next two by name, as what they make may stay for the process's life. So each has
// to be there when it calls: not inlined, and with something left to do afterwards.

[[gnu::noinline]] mrImageCacheItem* make_cache_entry(dgDuctImage* image, int age)
{
    return new mrImageCacheItem(image, age);
}

[[gnu::noinline]] bool read_cache_images(utString const& path, int start,
                                         utStringdgDuctImagecoTablePtrcoPtrcoTable& images)
{
    return mrUtils::read_images(path, start, images) != 0;
}

/// "ONE OTHER" and a line feed.
void append_line(utString& text, int one, int other)
{
    text.append_integer(one);
    text += ' ';
    text.append_integer(other);
    text += '\n';
}

/// Reads one line without its line feed, or what there is of one that is too long or ends with the file.
/// @return 0 when the stream has failed by that
int read_line(std::istream& in, utString& line)
{
    char buffer[mrImageCache::max_line + 1];
    in.getline(buffer, sizeof buffer);
    // The count includes the line feed, where there was one.
    auto const count = static_cast<std::size_t>(in.gcount());
    line = utString(std::string_view(buffer, in.good() ? count - 1 : count));
    return in ? 1 : 0;
}

/// Splits a line at its first space into two numbers, of which each that is none becomes 0.
/// @return 0 when there are no two fields
int split(utString const& line, int& one, int& other)
{
    std::string_view const text = line.view();
    std::size_t const space = std::min(text.find(' '), text.size());
    std::size_t const digits = std::min(text.find_first_not_of(' ', space), text.size());
    one = other = 0;
    utString(text.substr(0, space)).parse(one);
    utString(text.substr(digits)).parse(other);
    return space > 0 && space + 1 < text.size();
}

/// The ages of the entries up to an empty line, or to where the stream fails.
coDList<int> read_ages(std::istream& in)
{
    coDList<int> ages;
    for (utString line; read_line(in, line) && !line.empty();) {
        int hash = 0;
        int age = 0;
        int const both = split(line, hash, age);
        UT_REQUIRE(both, "1 or both values are invalid");
        UT_REQUIRE(age > 0, "Invalid age");
        ages.append(age);
    }
    return ages;
}

/// Where the stream stands.
/// @return -1, which is no place in a file, when it has failed or the place is no int
int position_of(std::istream& in)
{
    std::streamoff const position = in.tellg();
    return position <= std::numeric_limits<int>::max() ? static_cast<int>(position) : -1;
}

/// Images with a reference on each, which is let go where nobody took it.
struct ReadImages
{
    ReadImages() = default;
    ReadImages(ReadImages const&) = delete;
    ReadImages& operator=(ReadImages const&) = delete;
    ~ReadImages()
    {
        for (auto const& [name, image] : table)
            if (image)
                image->unreference();
    }

    utStringdgDuctImagecoTablePtrcoPtrcoTable table{mrInitialSize, mrFillLimit};
};

} // namespace

mrImageCache::mrImageCache()
{
    UT_CHECK_VALID(m_check);
}

mrImageCache::mrImageCache(int max_cache_size, int shrinkage)
    : m_max_cache_size(max_cache_size), m_shrinkage(shrinkage)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(max_cache_size > 0, "Args");
    UT_REQUIRE(shrinkage > 0 && shrinkage < max_cache_size, "Args");
}

mrImageCache::~mrImageCache()
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    for (auto const& [key, entry] : m_table)
        delete entry;
}

int mrImageCache::invalid() const
{
    UT_CHECK_VALID(m_check);
    return m_max_cache_size < 0;
}

int mrImageCache::size() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    return static_cast<int>(m_table.size());
}

int mrImageCache::empty() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    return m_table.empty();
}

int mrImageCache::max_cache_size() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    return m_max_cache_size;
}

int mrImageCache::shrinkage() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    return m_shrinkage;
}

int mrImageCache::hash_value_exists(unsigned int hash) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    return m_table.member(key_of(hash));
}

void mrImageCache::add_image(unsigned int hash, dgDuctImage* image)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!hash_value_exists(hash), "argument out of range | Hash value already present!");
    UT_REQUIRE(image, "argument out of range | Args");
    UT_REQUIRE(!invalid(), "Invalid data");
    insert(key_of(hash), image, age());
}

dgDuctImage* mrImageCache::get_image(unsigned int hash) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    auto const found = std::find_if(m_table.begin(), m_table.end(),
                                    [key = key_of(hash)](auto const& entry) { return entry.key == key; });
    if (found == m_table.end())
        return nullptr;
    dgDuctImage* const image = found->value->image();
    found->value->set_age(age());
    return image;
}

void mrImageCache::remove_image(unsigned int hash)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    UT_REQUIRE(m_table.member(key_of(hash)), "Hash value not found!");
    m_table.remove(key_of(hash));
}

int mrImageCache::write(utString const& path)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "argument out of range | Args");
    UT_REQUIRE(!path.empty(), "argument out of range | Args");

    std::ofstream out = gx_create_stream(path);
    if (!out.is_open())
        return 0;
    utString text;
    append_line(text, m_max_cache_size, m_shrinkage);
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    for (auto const& [key, entry] : m_table) {
        append_line(text, key, entry->age());
        images[utString("").append_integer(key)] = entry->image();
    }
    text += '\n';
    out << text.view();
    out.close();
    // On a full disk the stream fails; half of the entries is no success.
    if (!out)
        return 0;
    mrUtils::write_images(images, path);
    return 1;
}

mrFileMatReadStatus mrImageCache::read(utString const& path)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(invalid(), "argument out of range | Args");
    UT_REQUIRE(!path.empty(), "argument out of range | Args");
    try {
        return read_parts(path);
    } catch (std::bad_alloc const&) {
        return mrFileMatBadContent;
    }
}

mrFileMatReadStatus mrImageCache::read_parts(utString const& path)
{
    std::ifstream in = gx_open_stream(path);
    if (!in.is_open())
        return mrFileMatOpenFailed;
    read_limits(in);
    coDList<int> const ages = read_ages(in);
    int const start = position_of(in);
    in.close();

    ReadImages images;
    if (!read_cache_images(path, start, images.table))
        return mrFileMatBadContent;
    UT_REQUIRE(images.table.size() == ages.size(), "Expected same size");
    take(images.table, ages);
    return mrFileMatReadOK;
}

void mrImageCache::read_limits(std::istream& in)
{
    utString line;
    read_line(in, line);
    int const both = split(line, m_max_cache_size, m_shrinkage);
    UT_REQUIRE(both, "1 or both vales are invalid");
    UT_REQUIRE(m_max_cache_size > 0, "Invalid Cache size");
    UT_REQUIRE(m_shrinkage < m_max_cache_size, "Invalid shrinkage value");
    UT_REQUIRE(!invalid(), "Invalid data");
}

/// Enters images with the ages in the same places. Those taken, with the reference that they were read with,
/// become null in the table.
void mrImageCache::take(utStringdgDuctImagecoTablePtrcoPtrcoTable& images, coDList<int> const& ages)
{
    auto age = ages.begin();
    for (auto const& [name, image] : images) {
        if (age == ages.end())
            return;
        int key = 0;
        name.parse(key);
        add_image(static_cast<unsigned int>(key), image, *age++);
        images[name] = nullptr;
    }
}

void mrImageCache::add_image(unsigned int hash, dgDuctImage* image, int age)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    UT_REQUIRE(!m_table.member(key_of(hash)), "argument out of range | Hash value already present!");
    UT_REQUIRE(image, "argument out of range | Args");
    UT_REQUIRE(age > 0, "Args");
    insert(key_of(hash), image, age);
}

void mrImageCache::shrink_by(int n)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    UT_REQUIRE(n > 0 && n < size(), "argument out of range | Args");
    int const old_size = size();
    m_shrinkage = n;
    mrItemKey::store_table_pointer(&m_table);
    for (mrItemKey const& candidate : eviction_candidates()) {
        int const removed = m_table.remove(candidate.key());
        UT_REQUIRE(removed, "Hash value not found in table!");
    }
    UT_REQUIRE(old_size - size() == m_shrinkage, "Incorrect shrinkage");
}

int mrImageCache::age()
{
    static std::time_t base = 0;
    if (base == 0)
        base = start_of_2009();
    double const seconds = std::difftime(utClock::now(), base);
    using Limits = std::numeric_limits<int>;
    return seconds >= Limits::min() && seconds <= Limits::max() ? static_cast<int>(seconds) : 0;
}

void mrImageCache::insert(int key, dgDuctImage* image, int age)
{
    std::unique_ptr<mrImageCacheItem> entry(make_cache_entry(image, age));
    if (static_cast<int>(m_table.size()) >= m_max_cache_size)
        shrink_by(m_shrinkage);
    mrImageCacheItem*& place = m_table[key];
    place = entry.release();
}

mrItemKeycoSortedList mrImageCache::eviction_candidates() const
{
    mrItemKeycoSortedList candidates;
    int newest = 0;
    int count = 0;
    auto entry = m_table.begin();
    auto const end = m_table.end();
    for (; entry != end && count < m_shrinkage; ++entry, ++count) {
        candidates.add(mrItemKey(entry->key));
        newest = std::max(newest, entry->value->age());
    }
    for (; entry != end; ++entry) {
        // The youngest of all entries met, not of the candidates: a cheap approximation of the oldest.
        int const age_of_entry = entry->value->age();
        if (age_of_entry <= newest) [[unlikely]] {
            UT_REQUIRE(count > 0, "List is empty!");
            candidates.remove_last();
            candidates.add(mrItemKey(entry->key));
            continue;
        }
        newest = age_of_entry;
    }
    return candidates;
}
