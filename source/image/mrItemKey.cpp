#include "mrItemKey.h"

#include "mrImageCacheItem.h"

namespace {

intmrImageCacheItemcoTablePtrcoPtrcoTable const* entries = nullptr;

int find_age(int key)
{
    mrImageCacheItem const* const entry = entries ? entries->read(key) : nullptr;
    return entry ? entry->age() : 0;
}

} // namespace

void mrItemKey::operator=(mrItemKey const& other)
{
    UT_CHECK_VALID(m_check);
    m_key = other.m_key;
}

mrItemKey::~mrItemKey()
{
    UT_CHECK_VALID(m_check);
}

int mrItemKey::key() const
{
    UT_CHECK_VALID(m_check);
    return m_key;
}

int mrItemKey::compare(mrItemKey const& other) const
{
    UT_CHECK_VALID(m_check);
    int const other_key = other.key();
    if (find_age(m_key) == find_age(other_key))
        return 0;
    return find_age(m_key) > find_age(other_key) ? 1 : -1;
}

void mrItemKey::store_table_pointer(intmrImageCacheItemcoTablePtrcoPtrcoTable* table)
{
    entries = table;
}
