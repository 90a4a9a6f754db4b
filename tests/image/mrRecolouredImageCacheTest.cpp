#include "mrRecolouredImageCache.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "mrTest.h"

TEST(mrRecolouredImageCache, GivesTheYoungestMatchOrMakesOne)
{
    giColour const red(255, 0, 0, 0);
    mrRecolouredImageCache::delete_singleton();
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    auto* const image = new dgDuctImage("", 2, 2);
    dgDuctImage* const oldest = cache.recoloured_image(image, red);
    auto* const equal_image = new dgDuctImage(*image);
    EXPECT_EQ(cache.recoloured_image(equal_image, giColour(255, 0, 0, 0)), oldest);
    equal_image->unreference();

    auto* const other = new dgDuctImage("", 2, 2);
    other->pixels()[0] = 1;
    dgDuctImage* const youngest = cache.recoloured_image(other, red);
    EXPECT_NE(youngest, oldest);
    EXPECT_NE(cache.recoloured_image(other, giColour(0, 0, 255, 0)), youngest);
    other->pixels()[0] = 0;
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
