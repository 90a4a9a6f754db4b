#include "surface.h"

#include "mrTest.h"

#include <gmock/gmock.h>

#include <cmath>

namespace mrtool {

using testing::ElementsAre;

TEST(surface, brings_values_into_range_and_says_so)
{
    SceneMaterial material;
    material.colour = SceneColour{2.0, NAN, -1.0};
    material.opacity = -0.5;
    material.shininess = 250.0; // the roughness counts before it
    material.roughness = 1.5;
    material.metalness = NAN;
    material.refractive_index = 2e7;
    material.emission = SceneColour{3.0, 1.0, 0.0};
    std::vector<std::string> notes;
    Surface const surface = surface_of(material, notes);
    EXPECT_EQ(surface.colour, giColour(255, 0, 0, 0));
    EXPECT_EQ(surface.transparency, 1.0);
    EXPECT_EQ(surface.polish, 0.0);
    EXPECT_EQ(surface.reflect, 0.0);
    EXPECT_EQ(surface.refractive_index, 1e7);
    EXPECT_EQ(surface.emission, 1.0);
    EXPECT_THAT(notes, ElementsAre("the colour of (2 nan -1) is brought into the range 0 to 1",
                                   "the roughness of 1.5 is taken as 1", "the metalness of nan is taken as 0",
                                   "the opacity of -0.5 is taken as 0", "the emission of 3 is taken as 1",
                                   "the emitted colour (3 1 0) becomes an emission of 1",
                                   "the refractive index of 2e+07 is taken as 1e+07"));

    SceneMaterial other;
    other.shininess = 4000.0;
    other.transparency = NAN;
    other.texture = "oak.png";
    notes.clear();
    Surface const second = surface_of(other, notes);
    EXPECT_EQ(second.polish, 1.0);
    EXPECT_EQ(second.colour, giColour(255, 255, 255, 0));
    EXPECT_THAT(notes, ElementsAre("the shininess of 4000 is taken as 1000",
                                   "the transparency of nan is taken as 0"));
}

} // namespace mrtool
