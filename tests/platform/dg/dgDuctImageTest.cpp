#include "dgDuctImage.h"

#include "mrTest.h"
#include "testImage.h"

#include <algorithm>
#include <climits>
#include <cmath>

namespace {

/// An image of another kind: each pixel tells its place.
class PlaceImage : public dgImage
{
public:
    int width() const override { return 3; }
    int height() const override { return 2; }
    void get_pixel(int x, int y, short* components) const override
    {
        for (int i = 0; i < 4; ++i)
            components[i] = static_cast<short>(100 * y + 10 * x + i);
    }
    void set_pixel(int, int, short const*) override {}
    int equal(dgImage const* other) const override { return other == this; }
};

} // namespace

TEST(dgDuctImage, IsEmptyWithTooFewOrTooManyPixels)
{
    for (auto const& [width, height] :
         {std::pair{0, 5}, std::pair{5, 0}, std::pair{-INT_MAX, 9}, std::pair{2'000'000'000, 2'000'000'000},
          std::pair{1 << 14, (1 << 14) + 1}}) {
        Image const image(new dgDuctImage("none", width, height));
        EXPECT_EQ(image->width(), 0);
        EXPECT_EQ(image->height(), 0);
        EXPECT_EQ(image->byte_count(), 0u);
        EXPECT_EQ(pixel(*image, 0, 0), (Pixel{0, 0, 0, 0}));
        image->set_all(gsColour(1, 1, 1));
        EXPECT_TRUE(image->equal(Image(new dgDuctImage(utCopyDeep, *image)).get()));
    }
}

TEST(dgDuctImage, StartsTransparentAndKeepsPixelsInsideAndWithinRange)
{
    Image const image(new dgDuctImage("", 3, 2));
    EXPECT_EQ(image->byte_count(), 24u);
    short const wild[4] = {-5, 300, 255, 32767};
    for (auto const& [x, y] : {std::pair{-1, 0}, std::pair{3, 0}, std::pair{0, -1}, std::pair{0, 2}})
        image->set_pixel(x, y, wild);
    EXPECT_EQ(std::count(image->pixels(), image->pixels() + 24, 0), 24);

    image->set_pixel(0, 1, wild);
    EXPECT_EQ(pixel(*image, 0, 1), (Pixel{0, 255, 255, 255}));
    EXPECT_EQ(image->pixels()[4 * 3 + 1], 255);
    EXPECT_EQ(pixel(*image, 3, 0), (Pixel{0, 0, 0, 0}));
    image->set_all(gsColour(1.0, 0.5, 0.4 / 255));
    EXPECT_EQ(pixel(*image, 2, 1), (Pixel{255, 128, 0, 255}));
    image->set_all(gsColour(NAN, -INFINITY, INFINITY));
    EXPECT_EQ(pixel(*image, 2, 1), (Pixel{0, 0, 255, 255}));
}

TEST(dgDuctImage, EqualsBySizeAndPixelsNeverByName)
{
    Image const image(new dgDuctImage("a", 4, 2));
    EXPECT_FALSE(image->equal(nullptr));
    for (auto const& [width, height] : {std::pair{4, 2}, std::pair{5, 2}, std::pair{4, 3}, std::pair{2, 4}})
        EXPECT_EQ(image->equal(Image(new dgDuctImage("b", width, height)).get()), width == 4 && height == 2);

    Image const changed(new dgDuctImage(utCopyDeep, *image));
    EXPECT_STREQ(changed->name(), "a");
    EXPECT_TRUE(image->equal(changed.get()));
    short const alpha[4] = {0, 0, 0, 1};
    changed->set_pixel(3, 1, alpha);
    EXPECT_FALSE(image->equal(changed.get()));
    EXPECT_EQ(pixel(*image, 3, 1), (Pixel{0, 0, 0, 0}));
    changed->new_name(nullptr);
    EXPECT_STREQ(changed->name(), "");
}

TEST(dgDuctImage, CopiesAndComparesImagesOfOtherKinds)
{
    dgCounted<PlaceImage> const place(new PlaceImage);
    place->reference();
    Image const copy(new dgDuctImage(utCopyDeep, *place));
    EXPECT_EQ(copy->references(), 0);
    EXPECT_EQ(pixel(*copy, 2, 1), (Pixel{120, 121, 122, 123}));
    EXPECT_TRUE(copy->equal(place.get()));
    short const other[4] = {120, 121, 122, 0};
    copy->set_pixel(2, 1, other);
    EXPECT_FALSE(copy->equal(place.get()));
}
