#include "mrFMPlainMat.h"

#include "materialText.h"

#include <gmock/gmock.h>

#include <limits>
#include <memory>
#include <regex>

using testing::Each;
using testing::ElementsAre;

namespace {

std::string const args = "source/file/mrFMPlainMat.cpp: Args";
std::string const state = "source/file/mrFMPlainMat.cpp: State";

constexpr double not_a_number = std::numeric_limits<double>::quiet_NaN();

mrFMPlainMat made(double polish, double reflect, double transparency, double emission,
                  double refractive_index, utString const& shader = utString())
{
    return mrFMPlainMat("m", properties({}), 1, giColour(1, 2, 3, 0), polish, reflect, transparency, emission,
                        refractive_index, shader);
}

std::unique_ptr<mrFMPlainMat> const original(red());

/// The element of the material above with other content for one of its leaves.
std::string changed(std::string const& leaf, std::string const& content)
{
    return std::regex_replace(written(*original), std::regex("<" + leaf + ">[^<]*<"),
                              "<" + leaf + ">" + content + "<", std::regex_constants::format_first_only);
}

} // namespace

TEST(mrFMPlainMat, MisuseIsReportedAndServed)
{
    made(0, 1, 1.5, 0, -1); // transparency and refractive index are for the reader to bound
    EXPECT_TRUE(reports().empty());
    made(-0.1, 0, 0, 0, 1);
    made(0, 1.1, 0, 0, 1);
    made(0, 0, 0, not_a_number, 1);
    EXPECT_THAT(reports(), ElementsAre(args, args, args));

    mrFMPlainMat const none;
    EXPECT_TRUE(none.invalid() && none.name().invalid() && none.shader_definition().invalid());
    EXPECT_TRUE(none.properties().empty());
    EXPECT_EQ(none.diffuse_colour(), giColour());
    EXPECT_EQ(none.affinity() + none.polish() + none.reflect() + none.transparency() + none.emission() +
                  none.refractive_index(),
              0);
    written(none);
    EXPECT_THAT(reports(), testing::AllOf(testing::SizeIs(11), Each(state)));
}

TEST(mrFMPlainMat, ComesBackFromItsElement)
{
    mrFMPlainMat back;
    ASSERT_EQ(read(written(*original), back), 1);
    EXPECT_TRUE(back == *original);

    for (utString const& no_shader : {utString(""), utString()}) {
        mrFMPlainMat const without = made(1, 1, 1, 1, mrFMPlainMat::max_refractive_index, no_shader);
        EXPECT_TRUE(without.shader_definition().invalid());
        for (char const* element : {"<lwshaderdef></lwshaderdef>", ""}) {
            mrFMPlainMat target;
            ASSERT_EQ(read(with(written(without), "<lwshaderdef></lwshaderdef>", element), target), 1);
            EXPECT_TRUE(target == without);
        }
    }
}

TEST(mrFMPlainMat, EqualityTakesEveryField)
{
    for (char const* leaf : {"name", "value", "affinity", "blue", "polish", "reflect", "transparency",
                             "emission", "refractive_index", "lwshaderdef"}) {
        mrFMPlainMat other;
        ASSERT_EQ(read(changed(leaf, "0"), other), 1) << leaf;
        EXPECT_FALSE(other == *original) << leaf;
    }
    EXPECT_TRUE(mrFMPlainMat() == mrFMPlainMat());
    EXPECT_FALSE(mrFMPlainMat() == *original);
    mrFMPlainMat const odd = made(0, 0, not_a_number, 0, 1);
    EXPECT_FALSE(odd == odd);
}

TEST(mrFMPlainMat, RefusalsLeaveTheNameAndStopAtTheirStep)
{
    std::string const text = written(*original);
    for (std::string const& bad :
         {changed("name", ""), changed("type", "text"), changed("affinity", "7.0"), changed("blue", "256"),
          with(text, "<diffuse_colour>", "<diffuse_colour><rgb8/>"), changed("polish", "1.001"),
          changed("reflect", "-0.001"), changed("transparency", "1.5"),
          changed("emission", "64bAAAAAAAA+H8="), changed("refractive_index", "20000000")}) {
        mrFMPlainMat target;
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_TRUE(target.invalid()) << bad;
    }

    mrFMPlainMat target = made(0.75, 0, 0, 0, 1, "old");
    EXPECT_EQ(read(changed("reflect", "3"), target), 0);
    EXPECT_EQ(target.name(), "m");
    EXPECT_EQ(target.affinity(), -7);
    EXPECT_EQ(target.polish(), 0.5);
    EXPECT_EQ(target.reflect(), 3.0) << "stored though out of range";
    EXPECT_EQ(target.refractive_index(), 1.0);
    EXPECT_EQ(target.shader_definition(), "old");
}
