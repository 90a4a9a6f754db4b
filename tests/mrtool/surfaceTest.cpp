#include "surface.h"

#include "mrTest.h"

#include <gmock/gmock.h>

#include <cmath>
#include <utility>

namespace mrtool {

using testing::ElementsAre;
using testing::IsEmpty;

namespace {

std::pair<Surface, std::vector<std::string>> converted(SceneMaterial const& material)
{
    std::vector<std::string> notes;
    Surface const surface = surface_of(material, notes);
    return {surface, notes};
}

} // namespace

TEST(surface, has_second_choices)
{
    SceneMaterial material;
    material.shininess = 250.0;
    material.reflectivity = 0.125;
    EXPECT_EQ(converted(material).first.polish, 0.5);
    EXPECT_EQ(converted(material).first.reflect, 0.125);
    material.roughness = 0.25;
    material.metalness = 0.5;
    EXPECT_EQ(converted(material).first.polish, 0.75);
    EXPECT_EQ(converted(material).first.reflect, 0.5);
    EXPECT_THAT(converted(material).second, IsEmpty());

    Surface const unsaid = converted(SceneMaterial()).first;
    EXPECT_EQ(unsaid.colour, giColour(204, 204, 204, 0));
    EXPECT_EQ(unsaid.polish, 0.0);
    EXPECT_EQ(unsaid.refractive_index, 1.0);
    SceneMaterial textured;
    textured.texture = "oak.png";
    EXPECT_EQ(converted(textured).first.colour, giColour(255, 255, 255, 0));
}

TEST(surface, brings_values_into_range_and_says_so)
{
    SceneMaterial material;
    material.colour = SceneColour{2.0, NAN, -1.0};
    material.opacity = -0.5;
    material.roughness = 1.5;
    material.metalness = NAN;
    material.refractive_index = 2e7;
    material.emission = SceneColour{3.0, 1.0, 0.0};
    auto const [surface, notes] = converted(material);
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
    EXPECT_EQ(converted(other).first.polish, 1.0);
    EXPECT_THAT(converted(other).second, ElementsAre("the shininess of 4000 is taken as 1000",
                                                     "the transparency of nan is taken as 0"));
}

} // namespace mrtool
