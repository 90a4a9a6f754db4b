#include "mrRecolouredImage.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "mrTest.h"

TEST(mrRecolouredImage, FollowsTheRuleForEveryComponentUnderEveryChannel)
{
    auto* const image = new dgDuctImage("ramp", 257, 1); // no number of pixels to be worked on together
    image->reference();
    for (std::size_t i = 0; i < image->byte_count(); ++i)
        image->pixels()[i] = static_cast<unsigned char>(i % 4 == 1 ? 255 - i / 4 : i / 4);
    for (int channel = 0; channel < 256; ++channel) {
        auto const c = static_cast<unsigned char>(channel);
        mrRecolouredImage const recoloured(image, giColour(c, c, 200, 77));
        double const factors[] = {channel / 255.0, channel / 255.0, 200 / 255.0, 1.0};
        for (std::size_t i = 0; i < image->byte_count(); ++i)
            ASSERT_EQ(recoloured.resultant_image()->pixels()[i],
                      static_cast<unsigned char>(image->pixels()[i] * factors[i % 4]))
                << i << " under " << channel;
    }
    image->unreference();
}

TEST(mrRecolouredImage, CountsReferencesAsItSays)
{
    auto* const image = new dgDuctImage("one", 1, 1);
    auto* const equal_image = new dgDuctImage(*image);
    auto* const first = new mrRecolouredImage(image, giColour(1, 2, 3, 99));
    auto* const second = new mrRecolouredImage(equal_image, giColour(4, 5, 6, 99));
    dgDuctImage* const resultant = first->resultant_image();
    giColour const* const colour = &first->colour();
    EXPECT_STREQ(resultant->name(), "one");
    EXPECT_TRUE(*first == *second);

    // A copy lets go of what it never took, so its share is taken here.
    image->reference();
    resultant->reference();
    {
        mrRecolouredImage const copy(*first);
        EXPECT_EQ(copy.resultant_image(), resultant);
        EXPECT_EQ(copy.colour(), giColour(1, 2, 3, 0));
    }
    equal_image->reference();
    *first = *second;
    EXPECT_EQ(first->original_image(), equal_image);
    EXPECT_EQ(first->colour(), giColour(4, 5, 6, 0));
    EXPECT_NE(first->resultant_image(), second->resultant_image());
    EXPECT_EQ(first->resultant_image()->references(), 0);
    delete first;
    delete second;
    // What the assignment replaced is still there, and let go of here.
    EXPECT_EQ(image->references(), 1);
    EXPECT_EQ(resultant->references(), 1);
    delete colour;
    resultant->unreference();
    image->unreference();
}
