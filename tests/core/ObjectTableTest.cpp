#include <gtest/gtest.h>

#include <GwObjectTable.h>

#include <vector>

namespace {
std::vector<int*> walk(GwObjectTable<int> const& table) {
    std::vector<int*> seen;
    for (GwObjectTableIterator<int> next(table); int* entry = next();)
        seen.push_back(entry);
    return seen;
}
} // namespace

TEST(ObjectTable, AddingTheSamePointerTwiceKeepsOneSlot) {
    int a = 0;
    GwObjectTable<int> table;
    EXPECT_EQ(table.add(&a), 0);
    EXPECT_EQ(table.add(&a), 0);
    EXPECT_EQ(table.count(), 1);
}

TEST(ObjectTable, NullIsRefused) {
    GwObjectTable<int> table;
    EXPECT_EQ(table.add(nullptr), -1);
    EXPECT_EQ(table.count(), 0);
}

TEST(ObjectTable, HolesAreReusedLowestFirst) {
    int a = 0, b = 0, c = 0, d = 0, e = 0;
    GwObjectTable<int> table;
    table.add(&a);
    table.add(&b);
    table.add(&c);
    table.add(&d);
    table.remove(&b);
    table.remove(&a);
    EXPECT_EQ(table.count(), 4);
    EXPECT_EQ(table.add(&e), 0);
    EXPECT_EQ(table.add(&a), 1);
    EXPECT_EQ(table.count(), 4);
}

TEST(ObjectTable, RemovingDropsTrailingEmptySlots) {
    int a = 0, b = 0, c = 0;
    GwObjectTable<int> table;
    table.add(&a);
    table.add(&b);
    table.add(&c);
    table.remove(&b);
    EXPECT_EQ(table.count(), 3);
    table.remove(&c);
    EXPECT_EQ(table.count(), 1);
    EXPECT_EQ(table.remove(&c), -1);
    table.remove(&a);
    EXPECT_EQ(table.count(), 0);
}

TEST(ObjectTable, AFullArrayGrowsByOneHundredZeroedSlots) {
    std::vector<int> values(25);
    GwObjectTable<int> table(20);
    EXPECT_EQ(table.capacity(), 20);
    for (int& value : values)
        table.add(&value);
    EXPECT_EQ(table.capacity(), 120);
    EXPECT_EQ(table.count(), 25);
    for (int i = 0; i < 25; ++i)
        EXPECT_EQ(table[i], &values[i]);
    EXPECT_EQ(table[25], nullptr);
    EXPECT_EQ(table[-1], nullptr);
}

TEST(ObjectTable, WalksStopAtTheFirstEmptySlot) {
    int a = 0, b = 0, c = 0;
    GwObjectTable<int> table;
    table.add(&a);
    table.add(&b);
    table.add(&c);
    table.remove(&b);
    EXPECT_EQ(walk(table), std::vector<int*>{&a});
}

TEST(ObjectTable, LookupAnswersTheFirstMatch) {
    int a = 0, b = 0;
    GwObjectTable<int> table;
    table.add(&a);
    table.add(&b);
    EXPECT_EQ(table.indexOf(&b), 1);
    EXPECT_EQ(table.indexOf(nullptr), -1);
    int other = 0;
    EXPECT_FALSE(table.contains(&other));
}

TEST(ObjectTable, CompactMovesEntriesToTheFrontInOrder) {
    int a = 0, b = 0, c = 0, d = 0;
    GwObjectTable<int> table;
    table.add(&a);
    table.add(&b);
    table.add(&c);
    table.add(&d);
    table.remove(&a);
    table.remove(&c);
    table.compact();
    EXPECT_EQ(table.count(), 2);
    EXPECT_EQ(walk(table), (std::vector<int*>{&b, &d}));
}

TEST(ObjectTable, CopiesAreIndependent) {
    int a = 0, b = 0;
    GwObjectTable<int> table;
    table.add(&a);
    GwObjectTable<int> copy(table);
    copy.add(&b);
    table.remove(&a);
    EXPECT_EQ(table.count(), 0);
    EXPECT_EQ(walk(copy), (std::vector<int*>{&a, &b}));
}
