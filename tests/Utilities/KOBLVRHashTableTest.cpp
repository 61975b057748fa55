#include "KOBLVRHashTable.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {

struct Named {
    std::string name;
    int value = 0;
};

} // namespace

TEST(KOBLVRHashTable, FindsInsertsAndClearsAcrossGrowth) {
    KOBLVRHashTable<Named> table;
    const auto named = [](const std::string& name) { return [name](const Named& entry) { return entry.name == name; }; };
    EXPECT_EQ(table.Find(1, named("a")), nullptr);
    // Every key of one hash: the probe has to tell them apart by equality alone.
    for (int i = 0; i < 1000; ++i) {
        const std::pair<Named*, bool> inserted = table.Insert(i % 7, named(std::to_string(i)), {std::to_string(i), i});
        ASSERT_TRUE(inserted.second);
    }
    EXPECT_EQ(table.Size(), 1000u);
    for (int i = 0; i < 1000; ++i) {
        const Named* found = table.Find(i % 7, named(std::to_string(i)));
        ASSERT_NE(found, nullptr);
        EXPECT_EQ(found->value, i);
    }
    // Inserting an existing key answers the entry that is there.
    const std::pair<Named*, bool> again = table.Insert(3, named("3"), {"3", -1});
    EXPECT_FALSE(again.second);
    EXPECT_EQ(again.first->value, 3);
    EXPECT_EQ(table.Find(4, named("3")), nullptr);
    int sum = 0;
    table.ForEach([&sum](const Named& entry) { sum += entry.value; });
    EXPECT_EQ(sum, 999 * 1000 / 2);

    // A cleared table holds nothing, and its storage serves again.
    for (int round = 0; round < 3; ++round) {
        table.Clear();
        EXPECT_EQ(table.Size(), 0u);
        EXPECT_EQ(table.Find(0, named("0")), nullptr);
        EXPECT_TRUE(table.Insert(5, named("x"), {"x", round}).second);
        EXPECT_EQ(table.Find(5, named("x"))->value, round);
        EXPECT_EQ(table.Find(5, named("5")), nullptr);
    }
}
