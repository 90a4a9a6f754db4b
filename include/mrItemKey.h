// The order of an image cache's entries for eviction.
#pragma once

#include "mrContainers.h"
#include "mrExport.h"
#include "utCheckValid.h"

/// The hash value of an image cache's entry, ordered by the entry's age at the time of comparing: the least recently
/// used first.
///
/// Keys of all caches look their entries up in the table that was stored last, and can be compared only while that is
/// the table of their own cache. For one thread at a time.
class MR_API mrItemKey
{
public:
    /// A key of the hash value 0.
    mrItemKey() = default;
    mrItemKey(int key) : m_key(key) {}
    mrItemKey(mrItemKey const& other) : m_key(other.m_key) {}
    void operator=(mrItemKey const& other);
    ~mrItemKey();

    int key() const;

    /// Compares the present ages; a missing entry has the age 0.
    /// @return 0 for equal ages, 1 when this key's entry was used more recently than the other's, else -1
    /// @report the table's report of its null key, at each look-up of a hash value 0
    int compare(mrItemKey const& other) const;

    /// Stores the table in which all keys look their entries up.
    /// @param table  borrowed until the next call, as long as keys are compared; null counts as an empty table
    static void store_table_pointer(intmrImageCacheItemcoTablePtrcoPtrcoTable* table);

private:
    int m_key = 0;
    utCheckValid m_check{this};
};
