#include "mrMatProp.h"

#include "materialText.h"

#include "coHash.h"

#include <gmock/gmock.h>

using testing::ElementsAre;

namespace {

std::string const args = "source/file/mrMatProp.cpp: Args";
std::string const state = "source/file/mrMatProp.cpp: State";

mrMatProp integer(utString const& name, int value, int client_data = 0)
{
    return mrMatProp(mrMatPropTypeIntegerTag, name, value, client_data);
}

} // namespace

TEST(mrMatProp, MisuseIsReportedAndServed)
{
    EXPECT_FALSE(string_prop("", utString()).invalid());
    integer("", 1);
    EXPECT_THAT(reports(), ElementsAre(args, args, args)) << "twice for the string";

    EXPECT_EQ(integer("price", 3).double_value(), 0.0);
    EXPECT_THAT(reports(), ElementsAre(state));

    mrMatProp const none;
    EXPECT_TRUE(none.invalid() && none.name().invalid() && none.string_value().invalid());
    EXPECT_EQ(none.prop_type(), mrMatPropString);
    EXPECT_EQ(none.client_data(), 0);
    EXPECT_EQ(none.integer_value() + none.double_value(), 0);
    written(none);
    EXPECT_THAT(reports(), testing::AllOf(testing::SizeIs(9), testing::Each(state)))
        << "numbers for the state and again for the type";
}

TEST(mrMatProp, EqualityLooksAtTheNameAndTheHashAtTheValue)
{
    mrMatProp const three = integer("price", 3);
    EXPECT_TRUE(string_prop("price", "dear") == three);
    EXPECT_FALSE(integer("Price", 3) == three);

    double const tenth = 0.1;
    mrMatProp const real(mrMatPropTypeDoubleTag, "real", tenth, 0);
    EXPECT_EQ(co_hash(integer("price", -1)), 0xffffffffu);
    EXPECT_EQ(co_hash(string_prop("price", "dear")), co_hash(utString("dear")));
    EXPECT_EQ(co_hash(real), co_hash(&tenth, 8));
    EXPECT_NE(co_bucket_hash(integer("a", 3)), co_bucket_hash(integer("b", 3))) << "sets would be slow";
    auto const set = properties({integer("price", 3, 1), integer("price", 4), integer("price", 3, 9)});
    EXPECT_EQ(set.size(), 2u);
    EXPECT_EQ(set.begin()->client_data(), 1) << "the member that is there stays";
}
