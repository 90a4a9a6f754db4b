#include "coSet.h"

#include "mrTest.h"

#include <string>

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

std::string shown(coSet<Property> const& set)
{
    utString text = "";
    for (Property const& each : set)
        (text += each.name).append_integer(static_cast<int>(each.value)) += ' ';
    return std::string(text.view());
}

} // namespace

TEST(CoSet, TakesMembersAsTheSameWhenHashAndEqualitySaySo)
{
    coSet<Property> const set = made({{"price", 3}, {"price", 4}, {"prices", 3}, {"price", 3}});
    EXPECT_EQ(shown(set), "price3 price4 prices3 ");
    EXPECT_FALSE(set.member({"prices", 4}));
    EXPECT_FALSE(set.member({"name", 3}));
    EXPECT_TRUE(set == made({{"prices", 3}, {"price", 3}, {"price", 4}}));
    EXPECT_FALSE(made({{"prices", 3}, {"price", 3}, {"price", 5}}) == set);
}

TEST(CoSet, IsCopiedWithItsOrderAndStandsAlone)
{
    coSet<Property> original = made({{"p", 9}, {"p", 5}, {"p", 7}});
    coSet<Property> copy(original);
    auto const& same = copy;
    copy = same;
    original.clear();
    EXPECT_FALSE(original.member({"p", 5}));
    copy.add({"p", 5});
    copy.add({"p", 1});
    EXPECT_EQ(shown(copy), "p9 p5 p7 p1 ");
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
