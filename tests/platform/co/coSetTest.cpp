#include "coSet.h"

#include "mrTest.h"

#include <string>

namespace {

int comparisons = 0;

/// Compares by name, hashes by value; a spread one has a further hash, of the name.
template <bool Spread>
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

template <bool Spread>
std::uint32_t co_hash(Property<Spread> const& property)
{
    return property.value;
}

std::size_t co_bucket_hash(Property<true> const& property)
{
    return co_hash(property.name);
}

template <class Set>
std::string shown(Set const& set)
{
    utString text = "";
    for (auto const& each : set)
        (text += each.name).append_integer(static_cast<int>(each.value)) += ' ';
    return std::string(text.view());
}

template <class Member>
class CoSet : public testing::Test
{};

using Members = testing::Types<Property<false>, Property<true>>;
TYPED_TEST_SUITE(CoSet, Members);

TYPED_TEST(CoSet, TakesMembersAsTheSameWhenHashAndEqualitySaySo)
{
    coSet<TypeParam> set(4, 50);
    EXPECT_TRUE(set.empty());
    for (auto const& each :
         {TypeParam{"price", 3}, TypeParam{"price", 4}, TypeParam{"code", 3}, TypeParam{"price", 3}})
        set.add(each);

    EXPECT_EQ(shown(set), "price3 price4 code3 ");
    EXPECT_EQ(set.size(), 3u);
    EXPECT_TRUE(set.member(TypeParam{"code", 3}));
    EXPECT_FALSE(set.member(TypeParam{"code", 4}));
    EXPECT_FALSE(set.member(TypeParam{"name", 3}));
}

TYPED_TEST(CoSet, ComparesWithoutRegardToOrder)
{
    coSet<TypeParam> first(4, 50);
    coSet<TypeParam> second(0, 99);
    EXPECT_TRUE(first == second);
    first.add(TypeParam{"a", 1});
    first.add(TypeParam{"b", 2});
    EXPECT_FALSE(first == second);
    second.add(TypeParam{"b", 2});
    second.add(TypeParam{"a", 3});
    EXPECT_FALSE(first == second);
    second.clear();
    EXPECT_TRUE(second.empty());
    second.add(TypeParam{"b", 2});
    second.add(TypeParam{"a", 1});
    EXPECT_TRUE(first == second);
    EXPECT_EQ(shown(second), "b2 a1 ");
}

TYPED_TEST(CoSet, IsCopiedWithItsOrderAndStandsAlone)
{
    coSet<TypeParam> original(4, 50);
    for (std::uint32_t i = 0; i < 100; ++i)
        original.add(TypeParam{"p", 99 - i});
    coSet<TypeParam> copy(original);
    coSet<TypeParam> assigned(4, 50);
    assigned.add(TypeParam{"q", 1});
    assigned = original;
    auto const& same = assigned;
    assigned = same;
    std::string const all = shown(original);
    original.clear();

    EXPECT_EQ(all.substr(0, 12), "p99 p98 p97 ");
    EXPECT_EQ(shown(copy), all);
    EXPECT_EQ(shown(assigned), all);
    EXPECT_TRUE(copy.member(TypeParam{"p", 50}));
    copy.add(TypeParam{"p", 50});
    EXPECT_EQ(copy.size(), 100u);
}

} // namespace

TEST(CoSet, StaysFastWhereManyMembersShareAHash)
{
    coSet<Property<true>> set(4, 50);
    comparisons = 0;
    for (int round = 0; round < 2; ++round)
        for (int i = 0; i < 5000; ++i)
            set.add(Property<true>{utString().append_integer(i), 1});
    EXPECT_EQ(set.size(), 5000u);
    EXPECT_LT(comparisons, 6000);
}
