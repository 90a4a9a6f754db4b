#include "coTable.h"

#include "mrTest.h"

#include <string>
#include <vector>

namespace {

template <class Table>
std::vector<int> keys(Table const& table)
{
    std::vector<int> all;
    for (auto const& entry : table)
        all.push_back(entry.key);
    return all;
}

} // namespace

TEST(coTable, KeepsEntriesInTheOrderInWhichTheirKeysWereFirstSet)
{
    coTable<int, utString> table(4, 50);
    std::vector<int> expected;
    for (int i = 0; i < 1000; ++i) {
        expected.push_back(i * 7919 % 1009);
        table[expected.back()] = "first";
    }
    table[expected[3]] = "second";
    EXPECT_EQ(keys(table), expected);

    coTable<int, utString> copy(table);
    table.clear();
    EXPECT_FALSE(table.member(expected[3]));
    EXPECT_EQ(keys(copy), expected);
    EXPECT_EQ(copy.read(expected[3]), "second");
    table[1] = "only";
    copy = table;
    // After the places in front are gone.
    copy[2] = "second";
    copy.remove(1);
    EXPECT_EQ(keys(copy), std::vector<int>{2});
    copy.clear();
    copy[3] = "third";
    EXPECT_EQ(keys(copy), std::vector<int>{3});

    // A key that is a value of the same table.
    auto const number = [](int value) { return utString("").append_integer(value); };
    coTable<utString, utString> texts(0, 99);
    texts["0"] = "1";
    for (int i = 1; i < 100; ++i) {
        utString const& key = texts.read(number(i - 1));
        texts[key] = number(i + 1);
    }
    EXPECT_EQ(texts.size(), 100u);
    EXPECT_EQ(texts.read("99"), "100");
    // The invalid string is a key of its own.
    texts[""] = "empty";
    EXPECT_FALSE(texts.member(utString()));
    EXPECT_EQ(texts.size(), 101u);
}
