// A cache of images under hash values.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "mrTypes.h"
#include "utCheckValid.h"

#include <ctime>

class dgDuctImage;
class mrImageCacheFile;
class mrSource;
class mrTarget;
class utString;
struct mrCacheLine;
struct mrFault;
struct mrReadLimits;

/// Images under 32-bit hash values of the caller's choice, mrUtils::file_hash and symbol_defn_hash among
/// them.
///
/// Each entry holds one reference on its image and has an age, the second in which it was entered or asked
/// for last, counted from the start of 2009 in local standard time. An entry that is to come into a full
/// cache evicts a fixed number of others first, about those of the lowest ages: see shrink_by(). Whatever is
/// evicted, removed or overwritten stays alive, with its reference on its image, for the process's life; the
/// destructor lets go of what is still in the cache.
///
/// Invalid while its size limit is negative. Hash value 0 is an ordinary one, but looking it up is reported
/// as the table's null key. For one thread at a time, all caches together.
class MR_API mrImageCache
{
public:
    /// An invalid cache, with both limits -1, for read() to fill.
    mrImageCache();

    /// @param max_cache_size  the most entries, above 0
    /// @param shrinkage       how many are evicted at a time, above 0 and below @p max_cache_size
    /// @report "Args" for a size of 0 or less
    /// @report "Args" for a shrinkage out of its range; either way both are taken as they are
    mrImageCache(int max_cache_size, int shrinkage);

    /// @report "Invalid data" when invalid
    ~mrImageCache();
    mrImageCache(mrImageCache const&) = delete;
    mrImageCache& operator=(mrImageCache const&) = delete;

    /// 1 while the size limit is negative.
    int invalid() const;

    /// The number of entries.
    /// @report "Invalid data" when invalid
    int size() const;
    /// 1 when there are no entries.
    /// @report "Invalid data" when invalid
    int empty() const;
    /// @report "Invalid data" when invalid
    int max_cache_size() const;
    /// @report "Invalid data" when invalid
    int shrinkage() const;

    /// 1 when there is an entry of that hash value.
    /// @report "Invalid data" when invalid
    /// @report "argument out of range | CO_TABLE::member | null key" for 0
    int hash_value_exists(unsigned int hash) const;

    /// Enters the image with the present age, after an eviction where the cache is full. It takes the place
    /// of an entry of the same hash value.
    /// @param image  null makes an entry without an image
    /// @report what hash_value_exists() reports
    /// @report "argument out of range | Hash value already present!"
    /// @report "argument out of range | Args" when @p image is null
    /// @report "Invalid data" when invalid
    /// @report "Args" when @p image is null, from mrImageCacheItem
    /// @report what shrink_by() does when the cache is full
    void add_image(unsigned int hash, dgDuctImage* image);

    /// The image of that hash value, whose entry gets the present age, or null; takes time linear in the
    /// number of entries.
    /// @return borrowed, no reference is taken for the caller
    /// @report "Invalid data" when invalid
    /// @report "Invalid image!" from mrImageCacheItem for an entry without an image
    dgDuctImage* get_image(unsigned int hash) const;

    /// Takes the entry of that hash value out of the cache.
    /// @report "Invalid data" when invalid
    /// @report "Hash value not found!" when there is none
    /// @report "argument out of range | CO_TABLE::member | null key" for 0
    void remove_image(unsigned int hash);

    /// Writes the limits and the entries to the path, in the place of what is there, and after them the
    /// images as mrUtils::write_images does, each under its hash value. Ages are written as they are.
    /// @return 1, or 0 when the file cannot be created or does not take the limits and entries. Images that
    ///         are missing in the end, after one that is null, empty or cannot be written, make no difference
    /// @report "argument out of range | Args" when invalid; both limits are written all the same
    /// @report "argument out of range | Args" when @p path is empty
    /// @report "Invalid image!" from mrImageCacheItem for each entry without an image
    int write(utString const& path);

    /// Takes the limits from the file and adds its entries to those there are. Safe for untrusted input, but
    /// for the time that evictions take, see below. The limits are those of
    /// mrImageCacheFile::max_line and of mrReadLimits; see mrFileMat::read for what is no regular file.
    ///
    /// An image comes under the hash value that it is named by, with the age of the entry in the same place
    /// of the file's list, whichever image that was written for. On every image that an entry took, the
    /// reference of mrUtils::read_images stays too, for the process's life. Numbers that are none count as 0.
    /// Entries beyond the file's size limit evict. An eviction takes time linear in the number of entries,
    /// and a file may ask for as many as it has entries. Where its shrinkage is 0 or less an eviction may
    /// evict none, and the cache grows past the limit.
    /// @return mrFileMatReadOK; mrFileMatOpenFailed, and nothing has changed; or mrFileMatBadContent when the
    ///         images cannot be read, the empty line in front of them is missing, or a line is too long: no
    ///         entry has changed then. The same when there is not enough memory; then some may have been
    ///         entered, evicted or replaced
    /// @report "argument out of range | Args" when the cache is valid already
    /// @report "argument out of range | Args" when @p path is empty
    /// @report "1 or both vales are invalid" unless the first line has two fields
    /// @report "Invalid Cache size" unless it is above 0
    /// @report "Invalid shrinkage value" unless it is below the size
    /// @report "Invalid data" when the size is negative
    /// @report "1 or both values are invalid" for each entry without two fields
    /// @report "Invalid age" for each that is not above 0
    /// @report "Expected same size" when there are more images than entries or fewer; the surplus is let go
    /// @report what add_image() reports
    mrFileMatReadStatus read(utString const& path);

    // The same to and from anywhere, with words for what goes wrong.

    /// @param fault  receives why the result is 0; with a result of 1, which image is missing in what was written, if
    ///               one is
    /// @report what write() reports, but for the path
    int write(mrTarget const& target, mrFault& fault) const;

    /// @param fault  receives what is wrong and where, when the status is not mrFileMatReadOK
    /// @report what read() reports, but for the path
    mrFileMatReadStatus read(mrSource const& source, mrReadLimits const& limits, mrFault& fault);

    /// The time from which ages count: midnight at the start of 1 January 2009, local standard time.
    static std::time_t start_of_ages();

protected:
    /// Enters the image with an age, otherwise as the other one does.
    /// @param age  above 0; any is taken
    /// @report "Invalid data" when invalid
    /// @report "argument out of range | Hash value already present!"
    /// @report "argument out of range | Args" when @p image is null
    /// @report "Args" unless @p age is above 0
    /// @report "argument out of range | CO_TABLE::member | null key" for a hash value 0
    /// @report "Args" when @p image is null, from mrImageCacheItem
    /// @report what shrink_by() does when the cache is full
    void add_image(unsigned int hash, dgDuctImage* image, int age);

    /// Evicts @p n entries, which becomes the shrinkage. The entries are met in the order in which their hash
    /// values were entered. Where ages, all above 0, rise strictly in that order, those of the lowest go;
    /// otherwise an entry met later may go in the place of an older one.
    ///
    /// The first @p n that are met are candidates. Each of the others takes the place of the candidate of the
    /// greatest age, unless its own age is above 0 and above that of every entry met before. Of 5, 10, 7 with
    /// one to evict it is 7 that goes.
    /// @report "Invalid data" when invalid
    /// @report "argument out of range | Args" unless @p n is above 0 and below size()
    /// @report "List is empty!" for each that takes a place when @p n is 0 or less, and for the first of them
    ///         that of mrItemKeycoSortedList::remove_last
    /// @report what mrItemKey::compare() does
    /// @report "Hash value not found in table!" for a candidate that is no entry
    /// @report "Incorrect shrinkage" when more or fewer than @p n were evicted
    void shrink_by(int n);

    /// The present age: seconds by utClock since start_of_ages(); 0 when that does not fit an int.
    static int age();

private:
    int write_parts(mrTarget const& target, mrFault& fault) const;
    mrFileMatReadStatus read_parts(mrSource const& source, mrReadLimits const& limits, mrFault& fault);
    void take_limits(mrCacheLine const& limits);
    void restore(mrImageCacheFile const& file);
    void insert(int key, dgDuctImage* image, int age);
    mrItemKeycoSortedList eviction_candidates() const;

    int m_max_cache_size = -1;
    int m_shrinkage = -1;
    intmrImageCacheItemcoTablePtrcoPtrcoTable m_table{mrInitialSize, mrFillLimit};
    utCheckValid m_check{this};
};
