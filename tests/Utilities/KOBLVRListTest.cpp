#include "KOBLVRListP.h"
#include "KOBLVRListPV.h"

#include <gtest/gtest.h>

namespace {

struct Counted {
    static int alive;
    Counted() { ++alive; }
    ~Counted() { --alive; }
};
int Counted::alive = 0;

typedef KOBLVRListP<Counted> CountedList;

int CompareInts(const void* a, const void* b) {
    const int x = **static_cast<int* const*>(a);
    const int y = **static_cast<int* const*>(b);
    return (x > y) - (x < y);
}

} // namespace

TEST(KOBLVRListPV, EditsKeepOrderAndCount) {
    int a = 1, b = 2, c = 3, d = 4;
    KOBLVRListPV list;
    list.Append(&a);
    list.Append(&c);
    list.Insert(&b, 1);
    list.Insert(&d, 99);
    ASSERT_EQ(list.Size(), 4);
    EXPECT_EQ(list[0], &a);
    EXPECT_EQ(list[1], &b);
    EXPECT_EQ(list[3], &d);
    EXPECT_EQ(list.Locate(&c, 0), 2);
    EXPECT_EQ(list.Locate(&a, 1), -1);

    KOBLVRListPV other;
    other.Append(&b);
    other.Append(&d);
    EXPECT_EQ(list.Remove(other), 2);
    EXPECT_EQ(list.Size(), 2);
    EXPECT_EQ(list.RemoveValue(&b), 0);
    EXPECT_EQ(list.RemoveValue(&a), 1);
    EXPECT_EQ(list[0], &c);

    list.Size(4, nullptr);
    EXPECT_EQ(list.RemoveNulls(), 3);
    EXPECT_EQ(list.Size(), 1);
    EXPECT_EQ(list.RemovePosition(5), 0);

    KOBLVRListPV copy(list);
    EXPECT_EQ(copy != list, 0);
    copy.Append(&a);
    EXPECT_EQ(copy != list, 1);
}

TEST(KOBLVRListPV, SortsAndSearchesThroughSlotPointers) {
    int values[] = {5, 1, 4, 2, 3};
    KOBLVRListPV list;
    for (int& v : values) list.Append(&v);
    list.QuickSort(CompareInts);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(*static_cast<int*>(list[i]), i + 1);
    int wanted = 4;
    int* key = &wanted;
    EXPECT_EQ(list.BinarySearch(&key, CompareInts), 3);
    int missing = 9;
    key = &missing;
    EXPECT_EQ(list.BinarySearch(&key, CompareInts), -1);
}

TEST(KOBLVRListP, DeleteAllFreesNonNullElementsAndEmpties) {
    CountedList list;
    list.Append(new Counted);
    list.Append(nullptr);
    list.Append(new Counted);
    ASSERT_EQ(Counted::alive, 2);
    list.DeleteAll();
    EXPECT_EQ(Counted::alive, 0);
    EXPECT_EQ(list.Size(), 0);

    CountedList a, b;
    Counted item;
    a.Append(&item);
    b.Append(&item);
    EXPECT_TRUE(a == b);
    b.Append(&item);
    EXPECT_FALSE(a == b);
    EXPECT_EQ(a != b, 1);
}
