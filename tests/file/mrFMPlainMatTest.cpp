#include "mrFMPlainMat.h"

#include "materialText.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <regex>

namespace {

std::unique_ptr<mrFMPlainMat> const original(red());

/// The element of a material with other content for the first of these leaves.
std::string changed(std::string const& leaf, std::string const& content)
{
    return std::regex_replace(written(*original), std::regex("<" + leaf + ">[^<]*<"),
                              "<" + leaf + ">" + content + "<", std::regex_constants::format_first_only);
}

} // namespace

TEST(mrFMPlainMat, MisuseIsReportedAndServed)
{
    auto const make = [](double polish, double reflect, double transparency, double emission) {
        mrFMPlainMat("m", properties({}), 1, giColour(), polish, reflect, transparency, emission, -1, "");
    };
    make(0, 1, 1.5, 0); // transparency and refractive index are for the reader to bound
    make(-0.1, 0, 0, 0);
    make(0, 1.1, 0, 0);
    make(0, 0, 0, std::nan(""));
    mrFMPlainMat const nameless("", properties({}), 1, giColour(), 0, 0, 0, 0, 1, "");
    EXPECT_TRUE(nameless.shader_definition().invalid()) << "an empty one is none";
    std::string const args = "source/file/mrFMPlainMat.cpp: Args";
    EXPECT_THAT(reports(), testing::ElementsAre(args, args, args, args));

    mrFMPlainMat const none;
    EXPECT_TRUE(none.invalid() && none.name().invalid() && none.shader_definition().invalid());
    written(none);
    EXPECT_THAT(reports(),
                testing::AllOf(testing::SizeIs(3), testing::Each("source/file/mrFMPlainMat.cpp: State")));
}

TEST(mrFMPlainMat, RefusesWhatIsOutOfItsBounds)
{
    for (std::string const& bad :
         {changed("name", ""), changed("type", "text"), changed("affinity", "7.0"), changed("blue", "256"),
          changed("polish", "1.001"), changed("reflect", "-0.001"), changed("transparency", "1.5"),
          changed("emission", "64bAAAAAAAA+H8="), changed("refractive_index", "20000000")}) {
        mrFMPlainMat target;
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_TRUE(target.invalid() && target == mrFMPlainMat()) << bad;
    }
    mrFMPlainMat other;
    EXPECT_EQ(read(changed("refractive_index", "10000000"), other), 1);
    EXPECT_FALSE(other == *original);
}
