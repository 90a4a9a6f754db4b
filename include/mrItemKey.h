// The order in which an image cache looks for what to evict.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"

/// The hash value of an image cache's entry, ordered by the age that the entry has when it is compared: the
/// least recently used first.
///
/// Keys of all caches look their entries up in the one table that was named last, and can be compared only
/// while that is the table of their own cache. For one thread at a time.
class MR_API mrItemKey
{
public:
    /// A key of the hash value 0, until another is assigned.
    mrItemKey();
    mrItemKey(int key);
    mrItemKey(mrItemKey const& other);
    void operator=(mrItemKey const& other);
    ~mrItemKey();

    int key() const;

    /// Looks the ages up afresh each time, an entry that is not there having an age of 0.
    /// @return 0 for equal ages, 1 when this key's entry was used more recently than the other's, else -1
    /// @report the table's report of its null key, at each look-up of a hash value 0
    int compare(mrItemKey const& other) const;

    /// Names the table that keys look their entries up in from here on.
    /// @param table  borrowed until another is named, for as long as keys are compared; null stands for an
    ///               empty one
    static void store_table_pointer(intmrImageCacheItemcoTablePtrcoPtrcoTable* table);

private:
    int m_key = 0;
    utCheckValid m_check{this};
};
