#include "mrColourPalette.h"

#include "colours.h"
#include "mrTest.h"

namespace {

utString const none;

std::string const duplicate = "source/colour/mrColourPalette.cpp: Args";

} // namespace

TEST(mrColourPalette, KeepsColoursByIndexWithAndWithoutNames)
{
    mrColourPalette palette;
    EXPECT_EQ(palette.empty(), 1);
    palette.append(rgb(1, 2, 3), none, mrColourEncodingNone);
    palette.append(rgb(4, 5, 6), "name", mrColourEncodingCmyk);
    palette.append(rgb(7, 8, 9), "", mrColourEncodingRgb8);
    EXPECT_EQ(palette.size(), 3);
    utString name = "something";
    giColour const& first = palette.colour(0, name);
    EXPECT_TRUE(name.invalid());
    EXPECT_EQ(palette.colour(1, name), rgb(4, 5, 6));
    EXPECT_EQ(name, "name");
    palette.colour(2, name);
    EXPECT_EQ(name, "");
    EXPECT_EQ(palette.colour_encoding(1), mrColourEncodingCmyk);
    for (int i = 0; i < 1000; ++i)
        palette.append(rgb(i, i, i), none, mrColourEncodingRgb8);
    EXPECT_EQ(&palette.colour(0, name), &first);

    int index = 7;
    palette.append(rgb(1, 1, 1), "name", mrColourEncodingRgb8);
    EXPECT_EQ(reports(), std::vector<std::string>{duplicate});
    EXPECT_EQ(palette.find_colour("name", index), 1);
    EXPECT_EQ(index, 1003) << "the newest that bears it";
    EXPECT_EQ(palette.find_colour("Name", index), 0);
    EXPECT_EQ(index, -1);
}

TEST(mrColourPalette, ReportsAndServesWhatIsNotThere)
{
    mrColourPalette palette;
    palette.append(rgb(1, 2, 3), "", mrColourEncodingRgb8);
    int index = 7;
    EXPECT_EQ(palette.find_colour(none, index), 0);
    EXPECT_EQ(index, -1);
    EXPECT_EQ(palette.find_colour("", index), 1);
    EXPECT_EQ(index, 0);
    EXPECT_EQ(reports(), std::vector<std::string>(2, duplicate));

    utString name = "something";
    EXPECT_EQ(palette.colour(1, name), giColour());
    EXPECT_TRUE(name.invalid());
    EXPECT_EQ(reports().size(), 1u); // named in the tests of the array
    EXPECT_EQ(palette.colour_encoding(1), mrColourEncodingNone);
    doublecoDList list = values({1.0});
    EXPECT_EQ(palette.colour_components(1, list), 0);
    EXPECT_EQ(list.size(), 0u);
}

TEST(mrColourPalette, KeepsTheComponentsOfAColour)
{
    mrColourPalette palette;
    doublecoDList given = values({20.0, 40.0, 60.0, 10.0});
    doublecoDList first = values({7.0, 8.0, 9.0});
    palette.append(none, mrColourEncodingRgb8, first);
    palette.append("name", mrColourEncodingCmyk, given);
    given.clear();

    utString name;
    EXPECT_EQ(palette.colour(1, name), rgb(183, 137, 91));
    doublecoDList kept = values({7.0});
    EXPECT_EQ(palette.colour_components(0, kept), 1);
    EXPECT_EQ(numbers(kept), (std::vector{7.0, 8.0, 9.0}));
    EXPECT_EQ(palette.colour_components(1, kept), 1);
    EXPECT_EQ(numbers(kept), (std::vector{20.0, 40.0, 60.0, 10.0}));

    palette.append(none, mrColourEncodingNone, given);
    EXPECT_EQ(reports(),
              (std::vector<std::string>{
                  "source/colour/mrColourPalette.cpp: Args!", "source/utils/mrUtils.cpp: Invalid format!",
                  "source/utils/mrUtils.cpp: unknown enumerator constant | Invalid format!"}));
    EXPECT_EQ(palette.colour(2, name), giColour());
    EXPECT_EQ(palette.colour_components(2, kept), 1);
    EXPECT_EQ(kept.size(), 0u);
}
