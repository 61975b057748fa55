#include "KOBWBEnvironment.h"
#include "KOBWBIntegerEnum.h"
#include "KOBWBLimits.h"
#include "KOBWBRealEnum.h"

#include <gtest/gtest.h>

#include <vector>

namespace {

std::vector<int> Elements(const KOBWBIntegerEnum& domain) {
    std::vector<int> elements;
    for (int i = 0; i < domain.GetSize(); ++i) elements.push_back(domain.Get(i));
    return elements;
}

KOBWBIntegerEnum ListOf(std::vector<int> elements) {
    KOBWBIntegerEnum domain(KOBWBEnumList);
    for (int element : elements) domain.Append(element);
    return domain;
}

} // namespace

TEST(KOBWBIntegerEnum, ConstructionAndListEditing) {
    EXPECT_EQ(KOBWBIntegerEnum(KOBWBEnumList).GetRepresentation(), KOBWBEnumNil);
    EXPECT_EQ(KOBWBIntegerEnum(KOBWBEnumInterval).GetRepresentation(), KOBWBEnumAny);
    EXPECT_EQ(KOBWBIntegerEnum().GetCapacity(), 50);

    KOBWBIntegerEnum domain = ListOf({5, 3});
    EXPECT_EQ(Elements(domain), (std::vector<int>{5, 3}));
    KOBWBIntegerEnum sorted = ListOf({3, 5});
    sorted.Insert(4);
    EXPECT_EQ(Elements(sorted), (std::vector<int>{3, 4, 5}));
    sorted.Insert(4);
    EXPECT_EQ(Elements(sorted), (std::vector<int>{3, 4, 5}));
    int position = -1;
    EXPECT_TRUE(sorted.Find(5, position));
    EXPECT_EQ(position, 2);
    EXPECT_FALSE(sorted.Find(0, position));
    EXPECT_EQ(position, 0);
    EXPECT_EQ(sorted.FindGT(4), 2);
    EXPECT_EQ(sorted.FindGT(9), 3);
    EXPECT_EQ(sorted.FindLT(4), 0);
    EXPECT_EQ(sorted.FindLT(3), -1);
    sorted.RemovePosition(-1, 3);
    EXPECT_EQ(sorted.GetSize(), 3);
    sorted.RemovePosition(1, 10);
    EXPECT_EQ(Elements(sorted), (std::vector<int>{3}));

    KOBWBIntegerEnum single = ListOf({7});
    single.Remove(7);
    EXPECT_EQ(single.GetRepresentation(), KOBWBEnumNil);
    KOBWBIntegerEnum fromNil(KOBWBEnumNil);
    fromNil.Insert(2);
    EXPECT_EQ(Elements(fromNil), (std::vector<int>{2}));

    KOBWBIntegerEnum copy(sorted);
    sorted.Append(9);
    EXPECT_EQ(copy.GetSize(), 1);
    const KOBWBIntegerInterval hull = ListOf({2, 9}).GetAsIntegerInterval();
    EXPECT_EQ(hull.lower, 2);
    EXPECT_EQ(hull.upper, 9);

    KOBWBIntegerEnum grown(KOBWBEnumNil);
    for (int i = 0; i < 120; ++i) grown.Append(i);
    EXPECT_EQ(grown.GetSize(), 120);
    EXPECT_GE(grown.GetCapacity(), 120);
    EXPECT_EQ(grown.Get(119), 119);
}

TEST(KOBWBIntegerEnum, IntervalAndAnyRemoval) {
    KOBWBIntegerEnum domain;
    domain.SetAsIntegerInterval({3, 9});
    domain.Remove(3);
    EXPECT_EQ(domain.GetAsIntegerInterval().lower, 4);
    domain.Remove(6);
    EXPECT_EQ(domain.GetAsIntegerInterval().lower, 4);
    EXPECT_EQ(domain.GetAsIntegerInterval().upper, 9);
    domain.Append(12);
    EXPECT_EQ(domain.GetAsIntegerInterval().upper, 12);

    KOBWBIntegerEnum point;
    point.SetAsIntegerInterval({5, 5});
    point.Remove(5);
    EXPECT_EQ(point.GetAsIntegerInterval().lower, 6);
    EXPECT_EQ(point.GetAsIntegerInterval().upper, 4);

    KOBWBIntegerEnum any;
    any.Remove(4);
    EXPECT_EQ(any.GetRepresentation(), KOBWBEnumAny);
    any.Remove(KOBWBMaxInteger);
    EXPECT_EQ(any.GetRepresentation(), KOBWBEnumInterval);
    EXPECT_EQ(any.GetAsIntegerInterval().upper, KOBWBMaxInteger - 1);
    EXPECT_EQ(any.GetAsIntegerInterval().lower, -KOBWBMaxInteger);
}

TEST(KOBWBIntegerEnum, CorrectSwitchesAtTheMaximumSize) {
    KOBWBEnvironment env;
    KOBWBIntegerEnum small;
    small.SetAsIntegerInterval({1, 50});
    small.Correct(env);
    ASSERT_EQ(small.GetRepresentation(), KOBWBEnumList);
    EXPECT_EQ(small.GetSize(), 50);
    EXPECT_EQ(small.Get(49), 50);

    KOBWBIntegerEnum large;
    large.SetAsIntegerInterval({1, 51});
    large.Correct(env);
    EXPECT_EQ(large.GetRepresentation(), KOBWBEnumInterval);

    KOBWBIntegerEnum list(KOBWBEnumNil);
    for (int i = 0; i < 51; ++i) list.Append(2 * i);
    list.Correct(env);
    EXPECT_EQ(list.GetRepresentation(), KOBWBEnumInterval);
    EXPECT_EQ(list.GetAsIntegerInterval().upper, 100);

    KOBWBIntegerEnum messy = ListOf({4, 1, 4, 2});
    messy.Correct(env);
    EXPECT_EQ(Elements(messy), (std::vector<int>{1, 2, 4}));

    KOBWBIntegerEnum empty;
    empty.SetAsIntegerInterval({3, 1});
    empty.Correct(env);
    EXPECT_EQ(empty.GetRepresentation(), KOBWBEnumNil);
    KOBWBIntegerEnum whole;
    whole.SetAsIntegerInterval(KOBWBInteger_Any);
    whole.Correct(env);
    EXPECT_EQ(whole.GetRepresentation(), KOBWBEnumAny);
}

TEST(KOBWBRealEnum, ToleranceAndNormalisation) {
    KOBWBEnvironment env;
    KOBWBRealEnum domain(KOBWBEnumNil);
    domain.Insert(1.0, 1e-9);
    domain.Insert(1.0 + 1e-12, 1e-9);
    domain.Insert(0.5, 1e-9);
    ASSERT_EQ(domain.GetSize(), 2);
    EXPECT_EQ(domain.Get(0), 0.5);
    int position = -1;
    EXPECT_TRUE(domain.Find(1.0 + 1e-10, position, 1e-9));
    EXPECT_EQ(position, 1);
    domain.Remove(0.5 + 1e-12, 1e-9);
    EXPECT_EQ(domain.GetSize(), 1);

    KOBWBRealEnum messy(KOBWBEnumNil);
    messy.Append(3.0);
    messy.Append(1.0);
    messy.Append(3.0 + 1e-16);
    messy.Correct(env);
    ASSERT_EQ(messy.GetSize(), 2);
    EXPECT_EQ(messy.Get(0), 1.0);

    KOBWBRealEnum point;
    point.SetAsRealInterval({2.0, 2.0});
    point.Correct(env);
    EXPECT_EQ(point.GetRepresentation(), KOBWBEnumList);
    EXPECT_EQ(point.GetSize(), 1);
    point.SetAsRealInterval({2.0, 2.0});
    point.Remove(2.0, 1e-14);
    EXPECT_EQ(point.GetRepresentation(), KOBWBEnumNil);

    KOBWBIntegerEnum integers(KOBWBEnumNil);
    integers.Append(1);
    integers.Append(4);
    KOBWBRealEnum converted;
    converted = integers;
    EXPECT_EQ(converted.GetRepresentation(), KOBWBEnumList);
    EXPECT_EQ(converted.Get(1), 4.0);
    EXPECT_EQ(converted.GetAsRealInterval().upper, 4.0);
    EXPECT_EQ(KOBWBRealEnum().GetAsRealInterval().upper, KOBWBMaxReal);
}
