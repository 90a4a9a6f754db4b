#include "coSortedList.h"

#include "mrTest.h"

#include <random>
#include <string>

namespace {

struct Letter
{
    int compare(Letter const& other) const { return rank - other.rank; }

    int rank = -1;
    int name = '-';
};

std::string names(coSortedList<Letter> const& list)
{
    std::string all;
    for (Letter const& letter : list)
        all += static_cast<char>(letter.name);
    return all;
}

} // namespace

TEST(CoSortedList, PutsEqualElementsBeforeThoseThereAreAndTakesTheLast)
{
    coSortedList<Letter> list;
    for (auto const& [rank, name] : {Letter{2, 'a'}, Letter{1, 'b'}, Letter{2, 'c'}, Letter{3, 'd'},
                                     Letter{1, 'e'}, Letter{2, 'f'}, Letter{3, 'g'}})
        list.add({rank, name});
    EXPECT_EQ(names(list), "ebfcagd");
    EXPECT_EQ(list.remove_last().name, 'd');
    EXPECT_EQ(list.remove_last().name, 'g');
    EXPECT_EQ(list.remove_last().name, 'a');
    EXPECT_EQ(names(list), "ebfc");

    coSortedList<Letter> empty;
    EXPECT_EQ(empty.remove_last().name, '-');
    EXPECT_EQ(reports(),
              std::vector<std::string>{"platform/co/coSortedList.cpp: object in incorrect state for "
                                       "operation |CO_SORTEDLIST::remove_last | empty"});
}

TEST(CoSortedList, SortsWhateverComes)
{
    std::minstd_rand numbers;
    coSortedList<Letter> list;
    for (int i = 0; i < 1000; ++i)
        list.add({static_cast<int>(numbers() % 100), 'x'});
    EXPECT_EQ(list.size(), 1000u);
    int last = 0;
    for (Letter const& letter : list) {
        EXPECT_GE(letter.rank, last);
        last = letter.rank;
    }
}
