#include "mrImageCacheItem.h"

#include "dgDuctImage.h"
#include "utAssert.h"

mrImageCacheItem::mrImageCacheItem(dgDuctImage* image, int age) : m_image(dg_hold(image)), m_age(age)
{
    UT_REQUIRE(image, "Args");
}

mrImageCacheItem::~mrImageCacheItem()
{
    UT_CHECK_VALID(m_check);
}

void mrImageCacheItem::set_age(int age)
{
    UT_CHECK_VALID(m_check);
    m_age = age;
}

int mrImageCacheItem::age() const
{
    UT_CHECK_VALID(m_check);
    return m_age;
}

dgDuctImage* mrImageCacheItem::image() const
{
    UT_CHECK_VALID(m_check);
    UT_REQUIRE(m_image, "Invalid image!");
    return m_image.get();
}

mrImageCacheItem::mrImageCacheItem(mrImageCacheItem const&)
{
    ut_report_assert_failure(__FILE__, __LINE__,
                             "call to prohibited function | Copy constructor : Use prohibited!");
}

void mrImageCacheItem::operator=(mrImageCacheItem const&)
{
    UT_CHECK_VALID(m_check);
    ut_report_assert_failure(__FILE__, __LINE__,
                             "call to prohibited function | Assignment operator : Use prohibited!");
}
