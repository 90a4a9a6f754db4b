#include "mrRecolouredImageCache.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "mrTest.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

giColour const red(255, 0, 0, 0);
giColour const blue(0, 0, 255, 0);

dgDuctImage* grey(short level)
{
    auto* const image = new dgDuctImage("grey", 2, 2);
    image->set_all(gsColour(gsRGB(level, level, level)));
    return image;
}

/// Begins and ends with no cache. The images given to it stay alive with what it made of them.
class mrRecolouredImageCacheTest : public testing::Test
{
protected:
    mrRecolouredImageCacheTest() { mrRecolouredImageCache::delete_singleton(); }
    ~mrRecolouredImageCacheTest() override { mrRecolouredImageCache::delete_singleton(); }
};

} // namespace

TEST_F(mrRecolouredImageCacheTest, ComputesOnceForEqualImagesAndColours)
{
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    dgDuctImage* const image = grey(100);
    dgDuctImage* const first = cache.recoloured_image(image, red);
    EXPECT_EQ(image->references(), 1);
    EXPECT_EQ(cache.recoloured_image(image, giColour(255, 0, 0, 0)), first);
    dgDuctImage* const equal_image = grey(100);
    EXPECT_EQ(cache.recoloured_image(equal_image, red), first);
    equal_image->unreference();

    EXPECT_NE(cache.recoloured_image(image, blue), first);
    EXPECT_NE(cache.recoloured_image(grey(101), red), first);
    EXPECT_EQ(cache.clear(), 3);
}

TEST_F(mrRecolouredImageCacheTest, YoungestMatchWins)
{
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    dgDuctImage* const old_image = grey(100);
    dgDuctImage* const young_image = grey(50);
    cache.recoloured_image(old_image, red);
    dgDuctImage* const youngest = cache.recoloured_image(young_image, red);
    cache.recoloured_image(young_image, blue);
    young_image->set_all(gsColour(gsRGB(100, 100, 100)));
    EXPECT_EQ(cache.recoloured_image(old_image, red), youngest);
}

TEST_F(mrRecolouredImageCacheTest, WhatItMadeOutlivesItsEntries)
{
    EXPECT_EQ(mrRecolouredImageCache::singleton().clear(), 0);
    dgDuctImage* const image = grey(100);
    dgDuctImage* const before = mrRecolouredImageCache::singleton().recoloured_image(image, red);
    EXPECT_EQ(mrRecolouredImageCache::singleton().clear(), 1);
    dgDuctImage* const after = mrRecolouredImageCache::singleton().recoloured_image(image, red);
    EXPECT_NE(after, before);

    mrRecolouredImageCache::delete_singleton();
    mrRecolouredImageCache::delete_singleton();
    EXPECT_TRUE(before->equal(after));
    EXPECT_EQ(before->references(), 1);
    EXPECT_EQ(mrRecolouredImageCache::singleton().clear(), 0);
}

TEST_F(mrRecolouredImageCacheTest, ANullImageGetsAnEntryThatNothingMatches)
{
    mrRecolouredImageCache& cache = mrRecolouredImageCache::singleton();
    for (int time = 0; time < 2; ++time) {
        EXPECT_EQ(cache.recoloured_image(nullptr, red), nullptr);
        EXPECT_THAT(reports(), ElementsAre("source/image/mrRecolouredImageCache.cpp: Args",
                                           "source/image/mrRecolouredImage.cpp: Args",
                                           "source/image/mrRecolouredImage.cpp: State",
                                           "source/image/mrRecolouredImage.cpp: Invalid resultant imsge"));
    }
    EXPECT_NE(cache.recoloured_image(grey(100), red), nullptr);
    EXPECT_EQ(cache.clear(), 3);
}
