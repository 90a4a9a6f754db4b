#include "mrUtils.h"

#include "colours.h"
#include "mrTest.h"

#include <limits>
#include <tuple>

namespace {

giColour converted(mrColourEncoding encoding, std::vector<double> const& components)
{
    giColour colour(9, 9, 9, 9);
    doublecoDList list = values(components);
    mrUtils::colour_from_components(encoding, list, colour);
    return colour;
}

} // namespace

TEST(mrUtilsColour, IsMadeOfComponents)
{
    double const nan = std::numeric_limits<double>::quiet_NaN();
    using Case = std::tuple<mrColourEncoding, std::vector<double>, giColour>;
    for (auto const& [encoding, components, colour] :
         {Case{mrColourEncodingRgb8, {12.9, 0, 255}, rgb(12, 0, 255)},
          Case{mrColourEncodingRgb8, {-0.9, -1.9, 2147483647.9}, rgb(0, 255, 255)},
          Case{mrColourEncodingRgb8, {nan, 1e300, -2147483648.0 - 1.0}, rgb(0, 0, 0)},
          Case{mrColourEncodingCmy8, {0, 128, 255}, rgb(255, 127, 0)},
          Case{mrColourEncodingCmy8, {256, -1, -2147483648.0}, rgb(255, 0, 255)},
          Case{mrColourEncodingCmyk, {20, 40, 60, 10}, rgb(183, 137, 91)},
          Case{mrColourEncodingCmyk, {0, nan, -100, 0}, rgb(255, 0, 254)}})
        EXPECT_EQ(converted(encoding, components), colour) << encoding;
}

TEST(mrUtilsColour, ReportsAWrongCountAndTakesMissingValuesForZero)
{
    std::string const file = "source/utils/mrUtils.cpp: ";
    std::string const past = "platform/co/coDList.cpp: argument out of range | CO_DLIST::index";
    std::string const three = file + "Expected 3 component values!";
    std::string const four = file + "Expected 4 component values!";
    std::string const unknown = file + "unknown enumerator constant | Invalid format!";
    giColour const untouched(9, 9, 9, 9);
    using Case = std::tuple<int, std::vector<double>, giColour, std::vector<std::string>>;
    for (auto const& [encoding, components, colour, made] :
         {Case{mrColourEncodingRgb8, {7, 8}, rgb(7, 8, 0), {three, past}},
          Case{mrColourEncodingCmy8, {}, rgb(255, 255, 255), {three, past, past, past}},
          Case{mrColourEncodingCmyk, {0, 0, 0, 50, 0}, rgb(127, 127, 127), {four}},
          Case{mrColourEncodingNone, {1, 2, 3}, untouched, {file + "Invalid format!", unknown}},
          Case{4, {1, 2, 3}, untouched, {unknown}}, Case{-1, {1, 2, 3}, untouched, {unknown}}}) {
        EXPECT_EQ(converted(static_cast<mrColourEncoding>(encoding), components), colour) << encoding;
        EXPECT_EQ(reports(), made) << encoding;
    }
}
