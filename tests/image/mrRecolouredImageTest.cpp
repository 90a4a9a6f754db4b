#include "mrRecolouredImage.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <array>

using testing::ElementsAre;
using Pixel = std::array<short, 4>;

TEST(mrRecolouredImage, FollowsTheRuleForEveryComponentUnderEveryChannel)
{
    auto* const image = new dgDuctImage("ramp", 257, 1); // no number of pixels to be worked on together
    image->reference();
    for (short i = 0; i < 257; ++i)
        image->set_pixel(i, 0, Pixel{i, static_cast<short>(255 - i), i, i}.data());
    Pixel source{}, found{};
    for (int channel = 0; channel < 256; ++channel) {
        auto const c = static_cast<unsigned char>(channel);
        mrRecolouredImage const recoloured(image, giColour(c, c, 200, 77));
        double const factors[] = {channel / 255.0, channel / 255.0, 200 / 255.0, 1.0};
        for (int x = 0; x < 257; ++x) {
            image->get_pixel(x, 0, source.data());
            recoloured.resultant_image()->get_pixel(x, 0, found.data());
            for (std::size_t k = 0; k < 4; ++k)
                ASSERT_EQ(found[k], static_cast<short>(source[k] * factors[k])) << x << " under " << channel;
        }
    }
    mrRecolouredImage(image, giColour(147, 0, 0, 0)).resultant_image()->get_pixel(85, 0, found.data());
    EXPECT_EQ(found[0], 48); // 49 in whole numbers
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
    auto* const copy = new mrRecolouredImage(*first);
    EXPECT_EQ(copy->resultant_image(), resultant);
    EXPECT_EQ(copy->colour(), giColour(1, 2, 3, 0));
    delete copy;

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

TEST(mrRecolouredImage, ReportsWhatIsMissingAndReadsNone)
{
    mrRecolouredImage empty;
    EXPECT_EQ(empty.resultant_image(), nullptr);
    mrRecolouredImage const without_image(nullptr, giColour(1, 2, 3, 0));
    EXPECT_TRUE(without_image != empty);
    EXPECT_TRUE(without_image == without_image);
    EXPECT_EQ(mrRecolouredImage(without_image).colour(), giColour(1, 2, 3, 0));
    EXPECT_EQ((empty = mrRecolouredImage()).colour(), giColour());
    std::string const source = "source/image/mrRecolouredImage.cpp: ";
    EXPECT_THAT(reports(), ElementsAre(source + "State", source + "Invalid resultant imsge", source + "Args",
                                       source + "Args", source + "Args"));
}
