#include "mrFMPlainMat.h"

#include "materialText.h"

#include <cmath>
#include <functional>
#include <limits>
#include <memory>
#include <utility>

namespace {

/// What a plain material is made of.
struct Fields
{
    utString name = "brass";
    mrMatPropcoSet properties = ::properties({string_prop("maker", "me")});
    int affinity = -7;
    giColour colour{200, 30, 30, 0};
    double polish = 0.5;
    double reflect = 0.25;
    double transparency = 0.125;
    double emission = 1.0;
    double refractive_index = 1.5;
    utString shader_definition = "shade it";
};

bool equal(Fields const& one, Fields const& other)
{
    auto const made = [](Fields const& of) {
        return std::make_unique<mrFMPlainMat>(of.name, of.properties, of.affinity, of.colour, of.polish,
                                              of.reflect, of.transparency, of.emission, of.refractive_index,
                                              of.shader_definition);
    };
    auto const first = made(one), second = made(other);
    EXPECT_EQ(*first == *second, *second == *first);
    return *first == *second;
}

/// The fields with one of them changed.
Fields changed(std::function<void(Fields&)> const& change)
{
    Fields fields;
    change(fields);
    return fields;
}

} // namespace

TEST(mrFMPlainMat, ComparesEveryField)
{
    EXPECT_TRUE(equal({}, {}));
    double const a_little_more = std::nextafter(0.5, 1.0);
    std::pair<char const*, std::function<void(Fields&)>> const changes[] = {
        {"name", [](Fields& of) { of.name = "Brass"; }},
        {"one property more", [](Fields& of) { of.properties.add(string_prop("price", "1")); }},
        {"name of a property", [](Fields& of) { of.properties = properties({string_prop("Maker", "me")}); }},
        {"value of a property",
         [](Fields& of) { of.properties = properties({string_prop("maker", "you")}); }},
        {"affinity", [](Fields& of) { of.affinity = 7; }},
        {"red", [](Fields& of) { of.colour = giColour(201, 30, 30, 0); }},
        {"green", [](Fields& of) { of.colour = giColour(200, 31, 30, 0); }},
        {"blue", [](Fields& of) { of.colour = giColour(200, 30, 31, 0); }},
        {"fourth byte", [](Fields& of) { of.colour = giColour(200, 30, 30, 255); }},
        {"polish", [&](Fields& of) { of.polish = a_little_more; }},
        {"reflect", [](Fields& of) { of.reflect = 0.5; }},
        {"transparency", [](Fields& of) { of.transparency = 0.5; }},
        {"emission", [](Fields& of) { of.emission = 0.5; }},
        {"refractive index", [](Fields& of) { of.refractive_index = 1.25; }},
        {"shader definition", [](Fields& of) { of.shader_definition = "shade"; }},
        {"no shader definition", [](Fields& of) { of.shader_definition = ""; }},
    };
    for (auto const& [field, change] : changes) {
        EXPECT_FALSE(equal({}, changed(change))) << field;
        EXPECT_TRUE(equal(changed(change), changed(change))) << field;
    }
}

TEST(mrFMPlainMat, ComparesNoClientDataAndNoNaNAsEqual)
{
    auto const with_data = [](int data) {
        return changed([&](Fields& of) {
            of.properties = properties({mrMatProp(mrMatPropTypeStringTag, "maker", "me", data)});
        });
    };
    EXPECT_TRUE(equal(with_data(1), with_data(2)));
    Fields const with_nan =
        changed([](Fields& of) { of.transparency = std::numeric_limits<double>::quiet_NaN(); });
    EXPECT_FALSE(equal(with_nan, with_nan));
}

TEST(mrFMPlainMat, EqualsAnyInvalidOneWhenInvalid)
{
    Fields const nameless = changed([](Fields& of) { of.name = utString(); });
    Fields const other = changed([](Fields& of) {
        of.name = utString();
        of.affinity = 8;
    });
    EXPECT_TRUE(equal(nameless, other));
    EXPECT_FALSE(equal(nameless, {}));
    EXPECT_EQ(reports(), std::vector<std::string>(3, "source/file/mrFMPlainMat.cpp: Args"));
}
