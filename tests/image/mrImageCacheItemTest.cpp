#include "mrImageCacheItem.h"

#include "mrTest.h"

#include "dgDuctImage.h"

namespace {

struct Copied : mrImageCacheItem
{
    using mrImageCacheItem::mrImageCacheItem;
    Copied(Copied const& other) : mrImageCacheItem(other) {}
    using mrImageCacheItem::operator=;
};

std::string const file = "source/image/mrImageCacheItem.cpp: ";

} // namespace

TEST(mrImageCacheItem, IsNotCopied)
{
    Copied const entry(new dgDuctImage("", 1, 1), -3);
    Copied copy(entry);
    EXPECT_EQ(copy.image(), nullptr);
    copy = static_cast<mrImageCacheItem const&>(entry);
    EXPECT_EQ(copy.age(), 0);
    std::string const prohibited = file + "call to prohibited function | ";
    EXPECT_EQ(reports(), (std::vector<std::string>{prohibited + "Copy constructor : Use prohibited!",
                                                   file + "Invalid image!",
                                                   prohibited + "Assignment operator : Use prohibited!"}));
}
