#include "dgElements.h"

#include <gtest/gtest.h>

TEST(dgElements, ReflectionTakesItsNumbersInOrder)
{
    dgDrawState state;
    dgReflectionAttributes(0.1, 0.5, 0.2, 0.4, 100.0, gsColour(1, 1, 0), gsColour(0, 0, 1)).set(state);
    EXPECT_EQ(state.reflection.ambient, 0.1);
    EXPECT_EQ(state.reflection.diffuse, 0.5);
    EXPECT_EQ(state.reflection.transmission, 0.2);
    EXPECT_EQ(state.reflection.specular, 0.4);
    EXPECT_EQ(state.reflection.specular_exponent, 100.0);
    EXPECT_EQ(state.reflection.specular_colour, gsColour(1, 1, 0));
    EXPECT_EQ(state.reflection.emission, gsColour(0, 0, 1));
}

TEST(dgElements, TextureHoldsItsImage)
{
    auto* const image = new dgDuctImage("", 1, 1);
    image->reference();
    {
        dgTexture const texture(image, dgTextureImageAsIs, dgTextureFilterLinear, dgTextureWrapRepeat,
                                dgTextureModulate, 0);
        EXPECT_EQ(image->references(), 2);
    }
    EXPECT_EQ(image->references(), 1);
    image->unreference();
}
