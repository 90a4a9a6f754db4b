#include "coSet.h"

#include "mrTest.h"

namespace {

int comparisons = 0;

/// Compares by name, hashes by value, and has a further hash, of the first four letters of the name.
struct Property
{
    utString name;
    std::uint32_t value;

    bool operator==(Property const& other)
    {
        ++comparisons;
        return name == other.name;
    }
};

std::uint32_t co_hash(Property const& property)
{
    return property.value;
}

std::size_t co_bucket_hash(Property const& property)
{
    return co_hash(utString(property.name.view().substr(0, 4)));
}

coSet<Property> made(std::initializer_list<Property> members)
{
    coSet<Property> set(4, 50);
    for (Property const& each : members)
        set.add(each);
    return set;
}

} // namespace

TEST(CoSet, TakesMembersAsTheSameWhenHashAndEqualitySaySo)
{
    coSet<Property> const set = made({{"price", 3}, {"price", 4}, {"prices", 3}, {"price", 3}});
    utString shown = "";
    for (Property const& each : set)
        (shown += each.name).append_integer(static_cast<int>(each.value)) += ' ';
    EXPECT_EQ(shown, "price3 price4 prices3 ");
    EXPECT_FALSE(set.member({"prices", 4}));
    EXPECT_FALSE(set.member({"name", 3}));
    EXPECT_TRUE(set == made({{"prices", 3}, {"price", 3}, {"price", 4}}));
    EXPECT_FALSE(made({{"prices", 3}, {"price", 3}, {"price", 5}}) == set);
}

TEST(CoSet, StaysFastWhereManyMembersShareAHash)
{
    coSet<Property> set(4, 50);
    comparisons = 0;
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 5000; ++i)
            set.add({utString().append_integer(i), 1});
    EXPECT_EQ(set.size(), 5000u);
    EXPECT_LT(comparisons, 6000);
}
