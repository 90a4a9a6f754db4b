#include "coDList.h"

#include "coPageArr.h"
#include "mrTest.h"

#include <limits>

TEST(coDList, HasACursorThatOnlyItsOwnWalkMoves)
{
    coDList<int> list;
    EXPECT_EQ(list.next(), nullptr);
    list.append(1);
    list.append(2);
    EXPECT_EQ(list.next(), nullptr);
    list.restart();
    EXPECT_EQ(*list.next(), 1);

    coDList<int> copy(list);
    EXPECT_EQ(copy.next(), nullptr);
    copy = list;
    EXPECT_EQ(copy.next(), nullptr);
    EXPECT_EQ(*list.next(), 2);
    EXPECT_EQ(list.next(), nullptr);

    list.restart();
    list.clear();
    EXPECT_EQ(list.next(), nullptr);
    EXPECT_EQ(copy[1], 2);
}

TEST(coDList, ReportsAnIndexPastAnEndAsThePagedArrayDoes)
{
    coDList<double> list;
    coPageArr<double> array;
    list.append(4.5);
    array.append(4.5);
    double const* const first = &array[0];
    for (int i = 0; i < 10000; ++i)
        array.append(i);
    EXPECT_EQ(&array[0], first);
    EXPECT_EQ(array[10000], 9999.0);
    for (int const index : {10001, -1, std::numeric_limits<int>::max(), std::numeric_limits<int>::min()}) {
        EXPECT_EQ(list[index == 10001 ? 1 : index], 0.0);
        EXPECT_EQ(array[index], 0.0);
        EXPECT_EQ(reports(), (std::vector<std::string>{
                                 "platform/co/coDList.cpp: argument out of range | CO_DLIST::index",
                                 "platform/co/coPageArr.cpp: argument out of range | CO_PAGEARR::index"}));
    }
}
