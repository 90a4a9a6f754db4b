#include "coIndex.h"

#include "mrTest.h"

#include <vector>

TEST(CoIndex, FindsPositionsAlsoWhereHashesAreEqual)
{
    for (std::uint32_t const hashes : {1u, 7u, 0xFFFFFFFFu})
        for (int const fill_limit : {0, 50, 100}) {
            std::vector<int> array;
            auto const is = [&](int sought) {
                return [&array, sought](int i) { return array[static_cast<std::size_t>(i)] == sought; };
            };
            auto const hash = [&](int number) {
                return static_cast<std::uint32_t>(number) * 2654435769u % hashes;
            };
            coIndex index(0, fill_limit);
            for (int i = 0; i < 500; ++i) {
                EXPECT_EQ(index.find(hash(-i), is(-i)), -1);
                array.push_back(-i);
                index.set(hash(-i), i, is(-i));
            }
            array.push_back(-7);
            index.set(hash(-7), 500, is(-7));
            for (int i = 0; i < 500; ++i)
                EXPECT_EQ(index.find(hash(-i), is(-i)), i == 7 ? 500 : i) << hashes << ' ' << fill_limit;
            for (int i = 0; i < 502; i += 3)
                index.remove(hash(-i), is(-i));
            EXPECT_EQ(index.size(), 333u);
            for (int i = 8; i < 500; ++i)
                EXPECT_EQ(index.find(hash(-i), is(-i)), i % 3 ? i : -1) << hashes << ' ' << fill_limit;
        }
}
