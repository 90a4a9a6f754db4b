#include "mrItemKey.h"

#include "mrTest.h"

#include "dgDuctImage.h"
#include "mrImageCacheItem.h"

TEST(mrItemKey, IsOrderedByTheAgeThatItsEntryHasNow)
{
    mrImageCacheItem old_entry(new dgDuctImage("", 1, 1), 5);
    mrImageCacheItem young_entry(new dgDuctImage("", 1, 1), 9);
    intmrImageCacheItemcoTablePtrcoPtrcoTable table(mrInitialSize, mrFillLimit);
    table[-7] = &old_entry;
    table[1] = &young_entry;
    mrItemKey const old_key(-7);
    mrItemKey const young_key(1);
    mrItemKey::store_table_pointer(nullptr); // that of a cache before may still be named
    EXPECT_EQ(old_key.compare(young_key), 0) << "no table yet";

    mrItemKey::store_table_pointer(&table);
    EXPECT_EQ(old_key.compare(young_key), -1);
    EXPECT_EQ(mrItemKey(2).compare(old_key), -1) << "no entry";

    mrItemKeycoSortedList list;
    list.add(young_key);
    old_entry.set_age(9);
    list.add(old_key);
    EXPECT_EQ(list.remove_last().key(), 1);
    EXPECT_EQ(list.remove_last().key(), -7);

    old_entry.set_age(10);
    EXPECT_EQ(old_key.compare(young_key), 1);
    mrItemKey::store_table_pointer(nullptr);
}
