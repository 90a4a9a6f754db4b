#include "mrFMPlainMat.h"

#include "materialText.h"

#include <gmock/gmock.h>

#include <cmath>
#include <memory>
#include <regex>

namespace {

std::unique_ptr<mrFMPlainMat> const original(red());

/// The element of a material with other content for the first of these leaves.
std::string changed(std::string const& leaf, std::string const& content,
                    std::string const& text = written(*original))
{
    return std::regex_replace(text, std::regex("<" + leaf + ">[^<]*<"), "<" + leaf + ">" + content + "<",
                              std::regex_constants::format_first_only);
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

TEST(mrFMPlainMat, EqualityTakesEveryFieldUpToItsBounds)
{
    using Case = std::pair<char const*, char const*>;
    for (auto const& [leaf, content] :
         {Case{"name", "0"}, Case{"value", "0"}, Case{"affinity", "0"}, Case{"blue", "0"},
          Case{"polish", "1"}, Case{"reflect", "1"}, Case{"transparency", "1"}, Case{"emission", "0"},
          Case{"refractive_index", "10000000"}, Case{"lwshaderdef", ""}}) {
        mrFMPlainMat other;
        ASSERT_EQ(read(changed(leaf, content), other), 1) << leaf;
        EXPECT_FALSE(other == *original) << leaf;
    }
    mrFMPlainMat without_shader;
    EXPECT_EQ(read(with(written(*original), "<lwshaderdef>shade it</lwshaderdef>", ""), without_shader), 1);
    EXPECT_TRUE(without_shader.shader_definition().invalid());
}

TEST(mrFMPlainMat, RefusalsLeaveTheNameAndStopAtTheirStep)
{
    for (std::string const& bad :
         {changed("name", ""), changed("type", "text"), changed("affinity", "7.0"), changed("blue", "256"),
          changed("polish", "1.001"), changed("reflect", "-0.001"), changed("transparency", "1.5"),
          changed("emission", "64bAAAAAAAA+H8="), changed("refractive_index", "20000000")}) {
        mrFMPlainMat target;
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_TRUE(target.invalid() && target == mrFMPlainMat()) << bad;
    }

    std::unique_ptr<mrFMPlainMat> const target(red("old"));
    EXPECT_EQ(read(changed("affinity", "9", changed("reflect", "3", changed("emission", "0"))), *target), 0);
    EXPECT_EQ(target->name(), "old");
    EXPECT_EQ(target->affinity(), 9);
    EXPECT_EQ(target->reflect(), 3.0) << "stored though out of range";
    EXPECT_EQ(target->emission(), 1.0);
}
