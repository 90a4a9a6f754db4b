#include "coSortedList.h"

#include "mrTest.h"

#include <string>

using namespace std::literals;

namespace {

struct Letter
{
    int compare(Letter const& other) const { return rank - other.rank; }

    int rank = -1;
    int name = '-';
};

} // namespace

TEST(CoSortedList, PutsEqualElementsBeforeThoseThereAreAndTakesTheLast)
{
    coSortedList<Letter> list;
    for (auto const& [rank, name] : {Letter{2, 'a'}, Letter{1, 'b'}, Letter{2, 'c'}, Letter{3, 'd'},
                                     Letter{1, 'e'}, Letter{2, 'f'}, Letter{3, 'g'}})
        list.add({rank, name});
    std::string names;
    for (Letter const& letter : list)
        names += static_cast<char>(letter.name);
    EXPECT_EQ(names, "ebfcagd");
    for (char const last : "dgacfbe-"s)
        EXPECT_EQ(list.remove_last().name, last);
    EXPECT_EQ(reports(),
              std::vector<std::string>{"platform/co/coSortedList.cpp: object in incorrect state for "
                                       "operation |CO_SORTEDLIST::remove_last | empty"});
}
