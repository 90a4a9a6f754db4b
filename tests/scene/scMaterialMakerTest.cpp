#include "scMaterialMaker.h"

#include "mrTest.h"

#include "mrFMPlainMat.h"

#include <gmock/gmock.h>

#include <cmath>

using testing::ElementsAre;

TEST(scMaterialMaker, brings_values_into_range_and_says_so)
{
    scMaterial material;
    material.colour = scColour{2.0, NAN, -1.0};
    material.opacity = -0.5;
    material.shininess = 250.0; // the roughness counts before it
    material.roughness = 1.5;
    material.metalness = NAN;
    material.refractive_index = 2e7;
    material.emission = scColour{3.0, 1.0, 0.0};
    std::vector<scNote> notes;
    auto const plain = scMaterialMaker::make_plain(material, "steel", notes);
    EXPECT_EQ(plain->diffuse_colour(), giColour(255, 0, 0, 0));
    EXPECT_EQ(plain->transparency(), 1.0);
    EXPECT_EQ(plain->polish(), 0.0);
    EXPECT_EQ(plain->reflect(), 0.0);
    EXPECT_EQ(plain->refractive_index(), 1e7);
    EXPECT_EQ(plain->emission(), 1.0);
    EXPECT_THAT(scNote::lines(notes),
                ElementsAre("the colour of (2 nan -1) is brought into the range 0 to 1",
                            "the roughness of 1.5 is taken as 1", "the metalness of nan is taken as 0",
                            "the opacity of -0.5 is taken as 0", "the emission of 3 is taken as 1",
                            "the emitted colour (3 1 0) becomes an emission of 1",
                            "the refractive index of 2e+07 is taken as 1e+07"));

    scMaterial other;
    other.shininess = 4000.0;
    other.transparency = NAN;
    other.texture = "oak.png";
    notes.clear();
    auto const second = scMaterialMaker::make_plain(other, "\x01", notes);
    EXPECT_EQ(second->name(), "\u2401");
    EXPECT_EQ(second->polish(), 1.0);
    EXPECT_EQ(second->diffuse_colour(), giColour(255, 255, 255, 0));
    EXPECT_THAT(scNote::lines(notes), ElementsAre("the shininess of 4000 is taken as 1000",
                                                  "the transparency of nan is taken as 0"));
}
