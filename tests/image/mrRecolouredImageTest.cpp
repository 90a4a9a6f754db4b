#include "mrRecolouredImage.h"

#include "dgDuctImage.h"
#include "giColour.h"
#include "mrTest.h"

#include <gmock/gmock.h>

#include <array>

using testing::ElementsAre;

namespace {

using Pixel = std::array<short, 4>;

Pixel pixel(dgDuctImage const& image, int x, int y)
{
    Pixel components{};
    image.get_pixel(x, y, components.data());
    return components;
}

/// An image that outlives whatever references it, and counts from 0 in the tests' eyes.
struct Kept
{
    explicit Kept(dgDuctImage* made) : image(made) { image->reference(); }
    ~Kept() { image->unreference(); }
    Kept(Kept const&) = delete;
    Kept& operator=(Kept const&) = delete;
    int references() const { return image->references() - 1; }

    dgDuctImage* image;
};

dgDuctImage* of_one_pixel(Pixel const& components)
{
    auto* const image = new dgDuctImage("one", 1, 1);
    image->set_pixel(0, 0, components.data());
    return image;
}

std::string const source = "source/image/mrRecolouredImage.cpp: ";

} // namespace

TEST(mrRecolouredImage, FollowsTheRuleForEveryComponentUnderEveryChannel)
{
    // A width that leaves a rest of any number of pixels that may be worked on together.
    Kept const components(new dgDuctImage("ramp", 257, 1));
    for (short i = 0; i < 257; ++i) {
        Pixel const ramp{i, static_cast<short>(255 - i), i, i};
        components.image->set_pixel(i, 0, ramp.data());
    }

    for (int channel = 0; channel < 256; ++channel) {
        auto const c = static_cast<unsigned char>(channel);
        mrRecolouredImage const recoloured(components.image, giColour(c, c, 200, 77));
        dgDuctImage const& resultant = *recoloured.resultant_image();
        ASSERT_EQ(resultant.width(), 257);
        ASSERT_EQ(resultant.height(), 1);
        EXPECT_STREQ(resultant.name(), "ramp");
        for (int x = 0; x < 257; ++x) {
            Pixel expected = pixel(*components.image, x, 0);
            double const factors[] = {channel / 255.0, channel / 255.0, 200 / 255.0};
            for (std::size_t k = 0; k < 3; ++k)
                expected[k] = static_cast<short>(expected[k] * factors[k]);
            ASSERT_EQ(pixel(resultant, x, 0), expected) << x << " under " << channel;
        }
    }
}

TEST(mrRecolouredImage, TruncatesWhatFallsJustBelowAWholeNumber)
{
    Kept const image(of_one_pixel({200, 100, 50, 9}));
    EXPECT_EQ(pixel(*mrRecolouredImage(image.image, giColour(255, 128, 0, 0)).resultant_image(), 0, 0),
              (Pixel{200, 50, 0, 9}));
    Kept const thirds(of_one_pixel({85, 51, 255, 255}));
    EXPECT_EQ(pixel(*mrRecolouredImage(thirds.image, giColour(147, 155, 147, 0)).resultant_image(), 0, 0),
              (Pixel{48, 30, 147, 255}));
}

TEST(mrRecolouredImage, ComparesImagesAndThenTheColourObject)
{
    Kept const one(of_one_pixel({1, 2, 3, 4}));
    Kept const same(of_one_pixel({1, 2, 3, 4}));
    Kept const other(of_one_pixel({1, 2, 3, 5}));
    giColour const red(255, 0, 0, 0);
    mrRecolouredImage const a(one.image, red);
    EXPECT_TRUE(a == mrRecolouredImage(same.image, giColour(0, 255, 0, 0)));
    EXPECT_FALSE(a == mrRecolouredImage(other.image, red));
    EXPECT_TRUE(a != mrRecolouredImage(other.image, red));
    EXPECT_TRUE(a == a);
}

TEST(mrRecolouredImage, CountsReferencesAsItSays)
{
    Kept const image(of_one_pixel({10, 20, 30, 40}));
    giColour const colour(1, 2, 3, 99);
    auto* const original = new mrRecolouredImage(image.image, colour);
    EXPECT_EQ(image.references(), 1);
    EXPECT_EQ(original->colour(), colour);
    dgDuctImage* const resultant = original->resultant_image();
    EXPECT_EQ(resultant->references(), 1);

    // The copy lets go of what it never took; so its share is taken here.
    image.image->reference();
    resultant->reference();
    {
        mrRecolouredImage const copy(*original);
        EXPECT_EQ(copy.original_image(), image.image);
        EXPECT_EQ(copy.resultant_image(), resultant);
        EXPECT_EQ(copy.colour(), giColour(1, 2, 3, 0));
        EXPECT_EQ(image.references(), 2);
        EXPECT_EQ(resultant->references(), 2);
    }
    EXPECT_EQ(image.references(), 1);
    EXPECT_EQ(resultant->references(), 1);
    delete original;
    EXPECT_EQ(image.references(), 0);
}

TEST(mrRecolouredImage, AssignmentLeavesAliveWhatItReplaces)
{
    Kept const before(of_one_pixel({10, 20, 30, 40}));
    Kept const after(of_one_pixel({50, 60, 70, 80}));
    mrRecolouredImage const other(after.image, giColour(4, 5, 6, 99));
    after.image->reference(); // for the target's destructor
    giColour const* old_colour = nullptr;
    dgDuctImage* old_resultant = nullptr;
    {
        mrRecolouredImage target(before.image, giColour(1, 2, 3, 99));
        old_colour = &target.colour();
        old_resultant = target.resultant_image();
        EXPECT_EQ(&(target = other), &target);
        EXPECT_EQ(target.original_image(), after.image);
        EXPECT_EQ(target.colour(), giColour(4, 5, 6, 0));
        EXPECT_NE(target.resultant_image(), other.resultant_image());
        EXPECT_TRUE(target.resultant_image()->equal(other.resultant_image()));
        EXPECT_EQ(target.resultant_image()->references(), 0);
    }
    EXPECT_EQ(before.references(), 1);
    EXPECT_EQ(after.references(), 1);
    EXPECT_EQ(old_resultant->references(), 1);
    EXPECT_EQ(*old_colour, giColour(1, 2, 3, 99));
    before.image->unreference();
    old_resultant->unreference();
    delete old_colour;
}

TEST(mrRecolouredImage, ReportsWhatIsMissingAndReadsNone)
{
    mrRecolouredImage empty;
    EXPECT_TRUE(empty.invalid());
    EXPECT_EQ(empty.resultant_image(), nullptr);
    EXPECT_THAT(reports(), ElementsAre(source + "State", source + "Invalid resultant imsge"));
    EXPECT_EQ(empty.original_image(), nullptr);
    EXPECT_EQ(empty.colour(), giColour());

    mrRecolouredImage const without_image(nullptr, giColour(1, 2, 3, 0));
    EXPECT_TRUE(without_image.invalid());
    EXPECT_FALSE(without_image == empty);
    mrRecolouredImage const copy(without_image);
    EXPECT_EQ(copy.colour(), giColour(1, 2, 3, 0));
    EXPECT_TRUE((empty = mrRecolouredImage()).invalid());
    EXPECT_THAT(reports(), ElementsAre(source + "Args", source + "Args", source + "Args"));
}
