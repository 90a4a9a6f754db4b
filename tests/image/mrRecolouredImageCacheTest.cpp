#include "mrRecolouredImageCache.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "mrTest.h"

namespace {

giColour const red(255, 0, 0, 0);

/// Like all images given to the cache, it stays alive with what is made of it.
dgDuctImage* grey(int level)
{
    auto* const image = new dgDuctImage("grey", 2, 2);
    image->set_all(gsColour(gsRGB(level, level, level)));
    return image;
}

} // namespace

TEST(mrRecolouredImageCache, GivesTheYoungestMatchOrMakesOne)
{
    mrRecolouredImageCache::delete_singleton();
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    EXPECT_EQ(cache.clear(), 0);
    dgDuctImage* const image = grey(100);
    dgDuctImage* const oldest = cache.recoloured_image(image, red);
    dgDuctImage* const equal_image = grey(100);
    EXPECT_EQ(cache.recoloured_image(equal_image, giColour(255, 0, 0, 0)), oldest);
    equal_image->unreference();

    dgDuctImage* const other = grey(50);
    dgDuctImage* const youngest = cache.recoloured_image(other, red);
    EXPECT_NE(youngest, oldest);
    EXPECT_NE(cache.recoloured_image(other, giColour(0, 0, 255, 0)), youngest);
    other->set_all(gsColour(gsRGB(100, 100, 100)));
    EXPECT_EQ(cache.recoloured_image(image, red), youngest);

    EXPECT_EQ(cache.recoloured_image(nullptr, red), nullptr);
    EXPECT_EQ(cache.recoloured_image(nullptr, red), nullptr);
    EXPECT_EQ(reports().size(), 2u * 4u); // named in the tests of thumbnails
    EXPECT_EQ(cache.clear(), 5);
    dgDuctImage* const again = cache.recoloured_image(image, red);
    EXPECT_NE(again, oldest);
    mrRecolouredImageCache::delete_singleton();
    mrRecolouredImageCache::delete_singleton();
    EXPECT_TRUE(oldest->equal(again)); // both are still there
    EXPECT_EQ(mrRecolouredImageCache::singleton().clear(), 0);
}
