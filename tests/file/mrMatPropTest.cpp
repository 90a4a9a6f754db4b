#include "mrMatProp.h"

#include "materialText.h"

#include "coHash.h"

#include <gmock/gmock.h>

#include <bit>
#include <chrono>
#include <limits>

using testing::ElementsAre;

namespace {

std::string const args = "source/file/mrMatProp.cpp: Args";
std::string const state = "source/file/mrMatProp.cpp: State";

mrMatProp integer(utString const& name, int value, int client_data = 0)
{
    return mrMatProp(mrMatPropTypeIntegerTag, name, value, client_data);
}

mrMatProp real(utString const& name, double value)
{
    return mrMatProp(mrMatPropTypeDoubleTag, name, value, 0);
}

int same(mrMatProp a, mrMatProp const& b)
{
    return a == b;
}

} // namespace

TEST(mrMatProp, MisuseIsReportedAndServed)
{
    mrMatProp const text(mrMatPropTypeStringTag, "", utString(), 3);
    EXPECT_THAT(reports(), ElementsAre(args, args));
    EXPECT_FALSE(text.invalid());
    integer("", 1);
    real(utString(), 1);
    EXPECT_THAT(reports(), ElementsAre(args, args));

    mrMatProp const price = integer("price", 3);
    EXPECT_TRUE(price.string_value().invalid());
    EXPECT_EQ(price.double_value(), 0.0);
    EXPECT_THAT(reports(), ElementsAre(state, state));

    mrMatProp const none;
    EXPECT_TRUE(none.invalid() && none.name().invalid() && none.string_value().invalid());
    EXPECT_EQ(none.prop_type(), mrMatPropString);
    EXPECT_EQ(none.client_data(), 0);
    EXPECT_EQ(reports().size(), 4u);
    EXPECT_EQ(none.integer_value() + none.double_value(), 0);
    EXPECT_EQ(reports().size(), 4u) << "for the state and again for the type";
    written(none);
    EXPECT_THAT(reports(), ElementsAre(state));
}

TEST(mrMatProp, EqualityLooksAtTheNameAndTheHashAtTheValue)
{
    EXPECT_TRUE(same(integer("price", 3), string_prop("price", "dear")));
    EXPECT_FALSE(same(integer("price", 3), integer("Price", 3)));
    EXPECT_TRUE(same(mrMatProp(), mrMatProp()));
    EXPECT_FALSE(same(mrMatProp(), integer("price", 3)));

    double const tenth = 0.1;
    EXPECT_EQ(co_hash(integer("price", -1)), 0xffffffffu);
    EXPECT_EQ(co_hash(string_prop("price", "dear")), co_hash(utString("dear")));
    EXPECT_EQ(co_hash(real("price", tenth)), co_hash(&tenth, 8));

    auto const set = properties({integer("price", 3, 1), integer("price", 4), integer("price", 3, 9)});
    EXPECT_EQ(set.size(), 2u);
    EXPECT_EQ(set.begin()->client_data(), 1) << "the member that is there stays";
}

TEST(mrMatProp, ManyPropertiesOfOneValueAreNotSlow)
{
    auto const start = std::chrono::steady_clock::now();
    mrMatPropcoSet set(mrInitialSize, mrFillLimit);
    for (int i = 0; i < 200'000; ++i)
        set.add(integer(utString("n").append_integer(i), 3));
    EXPECT_EQ(set.size(), 200'000u);
    EXPECT_LT(std::chrono::steady_clock::now() - start, std::chrono::seconds(20)); // by pairs: minutes
}

TEST(mrMatProp, ValuesComeBackBitForBit)
{
    using limits = std::numeric_limits<double>;
    for (double value :
         {0.1, -0.0, limits::denorm_min(), limits::max(), -limits::infinity(), -limits::quiet_NaN()}) {
        mrMatProp back;
        ASSERT_EQ(read(written(real("d", value)), back), 1);
        EXPECT_EQ(std::bit_cast<std::uint64_t>(back.double_value()), std::bit_cast<std::uint64_t>(value));
    }
    mrMatProp back;
    ASSERT_EQ(read(written(integer("i", std::numeric_limits<int>::min(), 7)), back), 1);
    EXPECT_EQ(back.integer_value(), std::numeric_limits<int>::min());
    EXPECT_EQ(back.client_data(), 0) << "written, never read";
}

TEST(mrMatProp, RefusalsAndWhatTheyLeave)
{
    std::string const text = written(integer("price", 3));
    using Case = std::pair<std::string, mrMatPropType>;
    for (auto const& [bad, type] : {
             Case{with(text, "price", ""), mrMatPropDouble},
             Case{with(text, "integer", "Integer"), mrMatPropDouble},
             Case{with(text, "<type>integer</type>", ""), mrMatPropDouble},
             Case{with(text, ">3<", ">x<"), mrMatPropInteger},
             Case{with(text, "<value>3</value>", ""), mrMatPropInteger},
             Case{with(with(text, ">3<", "><"), "integer", "string"), mrMatPropString},
             Case{with(with(text, ">3<", ">64b3<"), "integer", "double"), mrMatPropDouble},
         }) {
        mrMatProp target = real("old", 0.5);
        EXPECT_EQ(read(bad, target), 0) << bad;
        EXPECT_EQ(target.name(), "old") << bad;
        EXPECT_EQ(target.prop_type(), type) << bad;
    }
}
