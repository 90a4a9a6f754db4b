// A cache of images under hash values.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrReadLimits.h"
#include "mrTypes.h"
#include "utCheckValid.h"

#include <ctime>

class mrImageCacheFile;
class mrSource;
class mrTarget;
struct mrCacheLine;
struct mrFault;

/// Images under 32-bit hash values of the caller's choice, such as mrUtils::file_hash and symbol_defn_hash.
///
/// Each entry holds one reference on its image and has an age: the second of its last use, counted from the start of
/// 2009 in local standard time. Entering an image into a full cache first evicts a fixed number of entries, roughly
/// those of the lowest ages: see shrink_by(). An entry that was evicted, removed or overwritten stays alive, with its
/// reference on its image, for the process's life. The destructor deletes the entries that are still in the cache.
///
/// Making one may throw std::bad_alloc. Invalid while its size limit is negative. Hash value 0 can be used, but looking it up is reported as the table's
/// null key. For one thread at a time, all caches together.
class MR_API mrImageCache
{
public:
    /// An invalid cache, with both limits -1, for read() to fill.
    mrImageCache() = default;

    /// @param max_cache_size  the most entries, above 0
    /// @param shrinkage       how many are evicted at a time, above 0 and below @p max_cache_size
    /// @report "Args" for a size of 0 or less
    /// @report "Args" for a shrinkage out of its range; both numbers are stored all the same
    mrImageCache(int max_cache_size, int shrinkage);

    /// @report "Invalid data" when invalid
    ~mrImageCache();
    mrImageCache(mrImageCache const&) = delete;
    mrImageCache& operator=(mrImageCache const&) = delete;

    /// 1 while the size limit is negative.
    int invalid() const;

    // Each reports "Invalid data" when invalid.

    /// The number of entries.
    int size() const { return static_cast<int>(check().m_table.size()); }
    int empty() const { return check().m_table.empty(); }
    int max_cache_size() const { return check().m_max_cache_size; }
    int shrinkage() const { return check().m_shrinkage; }

    /// 1 when an entry has that hash value.
    /// @report "Invalid data" when invalid
    /// @report "argument out of range | CO_TABLE::member | null key" for 0
    int hash_value_exists(unsigned int hash) const;

    /// Enters the image with the present age. Evicts entries of a full cache first. Replaces an entry of the same hash
    /// value. May throw std::bad_alloc, with the cache and the image's references unchanged.
    /// @param image  null makes an entry without an image
    /// @report as hash_value_exists()
    /// @report "argument out of range | Hash value already present!"
    /// @report "argument out of range | Args" when @p image is null
    /// @report "Invalid data" when invalid
    /// @report "Args" when @p image is null, from mrImageCacheItem
    /// @report as shrink_by() when the cache is full, which an invalid one always is: "Invalid data" comes five or six
    ///         times then
    void add_image(unsigned int hash, dgDuctImage* image);

    /// Finds the image of that hash value and gives its entry the present age, in time linear in the number of entries.
    /// @return borrowed, without a reference for the caller; null when the entry is missing or has no image
    /// @report "Invalid data" when invalid
    /// @report "Invalid image!" from mrImageCacheItem for an entry without an image
    dgDuctImage* get_image(unsigned int hash) const;

    /// Removes the entry of that hash value.
    /// @report "Invalid data" when invalid
    /// @report "argument out of range | CO_TABLE::member | null key" for 0
    /// @report "Hash value not found!" when the entry is missing
    void remove_image(unsigned int hash);

    /// Writes the limits, the entries and, as mrUtils::write_images does, the images under their hash values to the
    /// path. They take the place of an older file when all is written; mrTarget says what a crash leaves. Ages stay as
    /// they are.
    /// @return 1, or 0 when the file cannot be opened for writing, the limits and entries cannot be written, or the
    ///         file cannot be completed; an older file stays as it was then. An image that is null, empty or no PNG can
    ///         hold ends the images, and the file has those before it; the result is 1. When the disk or the
    ///         memory has no room for the images, an older file stays as it was and the result is 0; where there was
    ///         none, the file has those before it and the result is 1
    /// @report "argument out of range | Args" when invalid; both limits are written all the same
    /// @report "argument out of range | Args" when @p path is empty
    /// @report "Invalid image!" from mrImageCacheItem for each entry without an image
    int write(utString const& path);

    /// Takes the limits from the file and adds the file's entries. Safe for untrusted input except for the time of
    /// evictions. See mrImageCacheFile::max_line and mrReadLimits for the limits of the reader; only a regular file can
    /// be opened.
    ///
    /// An image is entered under the hash value in its title, with the age of the file's entry of the same rank,
    /// whichever image that entry was written for. The reference of mrUtils::read_images on an entered image stays for
    /// the process's life. Text that is no number counts as 0. Entries beyond the file's size limit evict others. An
    /// eviction takes time linear in the number of entries, and a file may cause one for each of its entries. With a
    /// shrinkage of 0 or less an eviction may remove nothing, and the cache grows past the limit. It may make a report
    /// for each entry then, so that there are as many reports as entries times evictions.
    /// @return mrFileMatReadOK; mrFileMatOpenFailed, with nothing changed; mrFileMatBadContent when the images cannot
    ///         be read, the empty line before them is missing, or a line is too long, with the limits taken and the
    ///         entries unchanged; or mrFileMatBadContent when memory runs out, with some entries perhaps entered,
    ///         evicted or replaced
    /// @report "argument out of range | Args" when the cache is valid already
    /// @report "argument out of range | Args" when @p path is empty
    /// @report "1 or both vales are invalid" unless the first line has two fields
    /// @report "Invalid Cache size" unless the size limit is above 0
    /// @report "Invalid shrinkage value" unless the shrinkage is below the size limit
    /// @report "Invalid data" when the size limit is negative
    /// @report "1 or both values are invalid" for each entry without two fields
    /// @report "Invalid age" for each age that is not above 0
    /// @report "Expected same size" when images and entries differ in number; the surplus is dropped
    /// @report as add_image()
    mrFileMatReadStatus read(utString const& path);

    // The same for any target or source, with the reason for a failure.

    /// @param fault  receives the reason for a result of 0; with a result of 1, why images are missing, if any are, and
    ///               the first of them unless memory ran out
    /// @report as above, except for the path
    int write(mrTarget const& target, mrFault& fault) const;

    /// @param fault  receives the reason and the place when the status is not mrFileMatReadOK
    /// @report as above, except for the path
    mrFileMatReadStatus read(mrSource const& source, mrReadLimits const& limits, mrFault& fault);

    /// The time of age 0: midnight at the start of 1 January 2009, local standard time.
    static std::time_t start_of_ages();

protected:
    /// Enters the image with the age, otherwise as above.
    /// @param age  above 0; any other is stored all the same
    /// @report "Invalid data" when invalid
    /// @report "argument out of range | CO_TABLE::member | null key" for a hash value 0
    /// @report "argument out of range | Hash value already present!"
    /// @report "argument out of range | Args" when @p image is null
    /// @report "Args" unless @p age is above 0
    /// @report "Args" when @p image is null, from mrImageCacheItem
    /// @report as shrink_by() when the cache is full
    void add_image(unsigned int hash, dgDuctImage* image, int age);

    /// Makes @p n the shrinkage and evicts that many entries. May throw std::bad_alloc, with none evicted. Visits the entries in the order in which their hash
    /// values were entered. If ages are above 0 and rise strictly in that order, the entries of the lowest ages go;
    /// otherwise a later entry may go instead of an older one.
    ///
    /// The first @p n entries are candidates. Each later entry replaces the candidate of the greatest age, unless its
    /// age is above 0 and above those of all entries before it. Of the ages 5, 10, 7, with @p n 1, 7 goes.
    /// @report "Invalid data" when invalid, and again each time that the size is asked for: three times in all, or four
    ///         with @p n above 0
    /// @report "argument out of range | Args" unless @p n is above 0 and below size()
    /// @report "List is empty!" for each entry that replaces a candidate when @p n is 0 or less, and for the first such
    ///         entry the report of mrItemKeycoSortedList::remove_last
    /// @report as mrItemKey::compare()
    /// @report "Hash value not found in table!" for a candidate that is no entry
    /// @report "Incorrect shrinkage" unless @p n entries were evicted
    void shrink_by(int n);

    /// The present age: seconds by utClock since start_of_ages(); 0 for a number beyond an int.
    static int age();

private:
    mrImageCache const& check() const;
    int write_parts(mrTarget const& target, mrFault& fault) const;
    mrFileMatReadStatus read_parts(mrSource const& source, mrReadLimits const& limits, mrFault& fault);
    void take_limits(mrCacheLine const& limits);
    void restore(mrImageCacheFile const& file);
    void insert(int key, dgDuctImage* image, int age);
    mrItemKeycoSortedList find_eviction_candidates() const;

    int m_max_cache_size = -1;
    int m_shrinkage = -1;
    intmrImageCacheItemcoTablePtrcoPtrcoTable m_table{mrInitialSize, mrFillLimit};
    utCheckValid m_check{this};
};
