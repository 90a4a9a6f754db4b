#include "coOrdered.h"

#include "mrTest.h"

#include <algorithm>
#include <random>
#include <vector>

TEST(coOrdered, FindsEntriesAlsoWhereHashesAreEqual)
{
    for (std::uint32_t const hashes : {1u, 7u, 0xFFFFFFFFu})
        for (int const fill_limit : {0, 50, 100}) {
            auto const hash = [&](int entry) {
                return static_cast<std::uint32_t>(entry) * 2654435769u % hashes;
            };
            auto const is = [](int sought) { return [sought](int entry) { return entry == sought; }; };
            coOrdered<int> entries(0, fill_limit);
            std::vector<int> expected;
            std::minstd_rand numbers;
            for (int i = 0; i < 500; ++i) {
                EXPECT_FALSE(entries.find(hash(-i), is(-i)));
                entries.add(hash(-i), -i);
                expected.push_back(-i);
                for (unsigned int more = i % 100 < 50 ? 0 : 2; more > 0 && !expected.empty(); --more) {
                    auto const gone = expected.begin() + static_cast<int>(numbers() % expected.size());
                    EXPECT_EQ(entries.remove(hash(*gone), is(*gone)), 1);
                    EXPECT_EQ(entries.remove(hash(*gone), is(*gone)), 0);
                    expected.erase(gone);
                }
            }
            ASSERT_EQ(entries.size(), expected.size());
            EXPECT_TRUE(std::equal(entries.begin(), entries.end(), expected.begin()));
            for (int const entry : expected)
                EXPECT_TRUE(entries.find(hash(entry), is(entry))) << hashes << ' ' << fill_limit;
        }
}
