#include "mrImageCache.h"

#include "mrGuard.h"
#include "mrImageBlock.h"
#include "mrImageCacheFile.h"
#include "mrImageCacheItem.h"
#include "mrItemKey.h"
#include "mrOutput.h"
#include "mrSource.h"
#include "mrTarget.h"

#include "dgDuctImage.h"
#include "utAssert.h"
#include "utClock.h"

#include <algorithm>
#include <limits>
#include <memory>

namespace {

/// Makes a key of the table and the file: the same bits, signed.
int make_key(unsigned int hash)
{
    return static_cast<int>(hash);
}

// The leak checker knows this function by name, because its entries may stay for the process's life: it must not be
// inlined.
[[gnu::noinline]] mrImageCacheItem* make_cache_entry(dgDuctImage* image, int age)
{
    return new mrImageCacheItem(image, age);
}

} // namespace

mrImageCache::mrImageCache(int max_cache_size, int shrinkage)
    : m_max_cache_size(max_cache_size), m_shrinkage(shrinkage)
{
    UT_REQUIRE(max_cache_size > 0, "Args");
    UT_REQUIRE(shrinkage > 0 && shrinkage < max_cache_size, "Args");
}

mrImageCache::~mrImageCache()
{
    check();
    for (auto const& [key, entry] : m_table)
        delete entry;
}

int mrImageCache::invalid() const
{
    UT_CHECK_VALID(m_check);
    return m_max_cache_size < 0;
}

mrImageCache const& mrImageCache::check() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "Invalid data");
    return *this;
}

int mrImageCache::hash_value_exists(unsigned int hash) const
{
    return check().m_table.member(make_key(hash));
}

void mrImageCache::add_image(unsigned int hash, dgDuctImage* image)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!hash_value_exists(hash), "argument out of range | Hash value already present!");
    UT_REQUIRE(image, "argument out of range | Args");
    UT_REQUIRE(!invalid(), "Invalid data");
    insert(make_key(hash), image, age());
}

dgDuctImage* mrImageCache::get_image(unsigned int hash) const
{
    check();
    auto const found = std::find_if(m_table.begin(), m_table.end(),
                                    [key = make_key(hash)](auto const& entry) { return entry.key == key; });
    if (found == m_table.end())
        return nullptr;
    dgDuctImage* const image = found->value->image();
    found->value->set_age(age());
    return image;
}

void mrImageCache::remove_image(unsigned int hash)
{
    check();
    UT_REQUIRE(m_table.member(make_key(hash)), "Hash value not found!");
    m_table.remove(make_key(hash));
}

int mrImageCache::write(utString const& path)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "argument out of range | Args");
    UT_REQUIRE(!path.empty(), "argument out of range | Args");
    mrFault ignored;
    return mr_guard(ignored, 0, [&] { return write_parts(mrTarget::to_path(path), ignored); });
}

int mrImageCache::write(mrTarget const& target, mrFault& fault) const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(!invalid(), "argument out of range | Args");
    fault = {};
    return mr_guard(fault, 0, [&] { return write_parts(target, fault); });
}

int mrImageCache::write_parts(mrTarget const& target, mrFault& fault) const
{
    mrOutput out(target, mrOutput::Mode::replace, fault);
    if (!out.file())
        return 0;
    utStringdgDuctImagecoTablePtrcoPtrcoTable images(mrInitialSize, mrFillLimit);
    std::string text = mrCacheLine::print(m_max_cache_size, m_shrinkage);
    for (auto const& [key, entry] : m_table) {
        text += mrCacheLine::print(key, entry->age());
        images[utString("").append_integer(key)] = entry->image();
    }
    text += '\n';
    // This fails on a full disk.
    bool const written =
        std::fwrite(text.data(), 1, text.size(), out.file()) == text.size() && std::fflush(out.file()) == 0;
    if (!written) {
        out.explain(fault);
        return 0;
    }
    bool const in_place = out.in_place();
    auto const images_written = mrImageBlock::write(images, out.file(), fault);
    // An older file is worth more than one without images: what stands beside it is dropped, and its text with it.
    if (images_written == mrImageBlock::Written::out_of_memory)
        return in_place;
    return out.close(fault) || (in_place && !images.empty());
}

mrFileMatReadStatus mrImageCache::read(utString const& path)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(invalid(), "argument out of range | Args");
    UT_REQUIRE(!path.empty(), "argument out of range | Args");
    mrFault ignored;
    return mr_guard(ignored, mrFileMatBadContent,
                    [&] { return read_parts(mrSource::from_path(path), {}, ignored); });
}

mrFileMatReadStatus mrImageCache::read(mrSource const& source, mrReadLimits const& limits, mrFault& fault)
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(invalid(), "argument out of range | Args");
    fault = {};
    return mr_guard(fault, mrFileMatBadContent, [&] { return read_parts(source, limits, fault); });
}

mrFileMatReadStatus mrImageCache::read_parts(mrSource const& source, mrReadLimits const& limits,
                                             mrFault& fault)
{
    mrImageCacheFile file;
    mrFileMatReadStatus const status = file.read(source, limits, true, fault);
    if (!file.has_limits())
        return status;
    take_limits(file.limits());
    for (mrCacheLine const& line : file.lines()) {
        UT_REQUIRE(line.two_fields, "1 or both values are invalid");
        UT_REQUIRE(line.second > 0, "Invalid age");
    }
    if (status != mrFileMatReadOK)
        return status;
    UT_REQUIRE(file.images().size() == file.lines().size(), "Expected same size");
    restore(file);
    return mrFileMatReadOK;
}

void mrImageCache::take_limits(mrCacheLine const& limits)
{
    m_max_cache_size = limits.first;
    m_shrinkage = limits.second;
    UT_REQUIRE(limits.two_fields, "1 or both vales are invalid");
    UT_REQUIRE(m_max_cache_size > 0, "Invalid Cache size");
    UT_REQUIRE(m_shrinkage < m_max_cache_size, "Invalid shrinkage value");
    UT_REQUIRE(!invalid(), "Invalid data");
}

/// Enters each image with the age of the line of the same rank.
void mrImageCache::restore(mrImageCacheFile const& file)
{
    auto line = file.lines().begin();
    for (auto const& [title, image] : file.images()) {
        if (line == file.lines().end())
            return;
        int key = 0;
        mrImageCacheFile::parse_hash(title, key);
        add_image(static_cast<unsigned int>(key), image.image.get(), line->second);
        image.image->reference(); // that of mrUtils::read_images, which stays for the process's life
        ++line;
    }
}

void mrImageCache::add_image(unsigned int hash, dgDuctImage* image, int age)
{
    check();
    UT_REQUIRE(!m_table.member(make_key(hash)), "argument out of range | Hash value already present!");
    UT_REQUIRE(image, "argument out of range | Args");
    UT_REQUIRE(age > 0, "Args");
    insert(make_key(hash), image, age);
}

void mrImageCache::shrink_by(int n)
{
    check();
    UT_REQUIRE(n > 0 && n < size(), "argument out of range | Args");
    int const old_size = size();
    m_shrinkage = n;
    mrItemKey::store_table_pointer(&m_table);
    for (mrItemKey const& candidate : find_eviction_candidates()) {
        int const removed = m_table.remove(candidate.key());
        UT_REQUIRE(removed, "Hash value not found in table!");
    }
    UT_REQUIRE(old_size - size() == m_shrinkage, "Incorrect shrinkage");
}

std::time_t mrImageCache::start_of_ages()
{
    static std::time_t const start = [] {
        std::tm date{};
        date.tm_mday = 1;
        date.tm_year = 109;
        return std::mktime(&date);
    }();
    return start;
}

int mrImageCache::age()
{
    double const seconds = std::difftime(utClock::now(), start_of_ages());
    using Limits = std::numeric_limits<int>;
    return seconds >= Limits::min() && seconds <= Limits::max() ? static_cast<int>(seconds) : 0;
}

void mrImageCache::insert(int key, dgDuctImage* image, int age)
{
    // What fails for want of memory changes nothing: it comes before the eviction.
    dgKeep const keep(image);
    std::unique_ptr<mrImageCacheItem> entry(make_cache_entry(image, age));
    m_table.make_room();
    if (static_cast<int>(m_table.size()) >= m_max_cache_size)
        shrink_by(m_shrinkage);
    mrImageCacheItem*& place = m_table[key];
    place = entry.release();
}

mrItemKeycoSortedList mrImageCache::find_eviction_candidates() const
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
        // The newest of all entries met, not of the candidates: a cheap approximation of the oldest entries.
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
