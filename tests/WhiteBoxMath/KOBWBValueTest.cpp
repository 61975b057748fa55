#include "KOBLVRAssert.h"
#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"
#include "KOBWBValue.h"

#include <gtest/gtest.h>

#include <string>

namespace {

KOBWBValue RealInterval(double lower, double upper) { return KOBWBValue(KOBWBRealInterval{lower, upper}); }

} // namespace

TEST(KOBWBValue, ConstructorsKindsAndTypeConstructor) {
    EXPECT_EQ(KOBWBValue().GetType(), KOBWBUndefinedValue);
    EXPECT_EQ(KOBWBValue(3).GetType(), KOBWBIntegerValue);
    EXPECT_EQ(KOBWBValue(3).GetAsFraction().numerator, 3);
    EXPECT_EQ(KOBWBValue(2.5).GetType(), KOBWBRealValue);
    EXPECT_EQ(KOBWBValue(KOBWBUndef).GetAsBoolean(), KOBWBUndef);
    EXPECT_EQ(KOBWBValue(KOBWBRealValue).GetAsReal(), 0.0);
    EXPECT_EQ(KOBWBValue(KOBWBBooleanValue).GetAsBoolean(), KOBWBFalse);
    EXPECT_EQ(KOBWBValue(KOBWBIntegerEnumValue).GetIntegerEnum().GetRepresentation(), KOBWBEnumAny);
    const KOBWBValue fromFractionType(KOBWBFractionValue);
    EXPECT_EQ(fromFractionType.GetType(), KOBWBIntegerValue);
    EXPECT_FALSE(fromFractionType.IsAFraction());
    EXPECT_LE(sizeof(KOBWBValue), 96u);

    const KOBWBValue piThird(KOBWBCreateFraction(1, 3, 1, 0));
    EXPECT_TRUE(piThird.IsAFraction());
    EXPECT_EQ(piThird.GetType(), KOBWBRealValue);
    EXPECT_TRUE(piThird.IsAKindOf(KOBWBRealValue));
    EXPECT_EQ(piThird.GetAsFraction().reserved, 1);
    EXPECT_DOUBLE_EQ(piThird.GetAsDouble(), 3.141592653589793 / 3);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(3, 1, 1, 1)).GetType(), KOBWBRealValue);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(4, 2, 0, 1)).GetType(), KOBWBIntegerValue);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(4, 2, 0, 1)).GetAsInteger(), 2);

    KOBWBValue* clone = piThird.Clone();
    EXPECT_TRUE(clone->IsAFraction());
    delete clone;
}

TEST(KOBWBValue, SetKeepsTheKindAndIgnoresOthers) {
    KOBWBValue real(1.5);
    real.Set(7);
    EXPECT_EQ(real.GetAsReal(), 1.5);
    real.Set(2.5);
    EXPECT_EQ(real.GetAsReal(), 2.5);

    KOBWBValue boolean(KOBWBTrue);
    boolean.Set(KOBWBCreateFraction(1, 2, 0, 1));
    EXPECT_EQ(boolean.GetType(), KOBWBBooleanValue);
    boolean.Set(0);
    EXPECT_EQ(boolean.GetAsBoolean(), KOBWBFalse);

    KOBWBValue undefined;
    undefined.Set(KOBWBRealInterval{1, 2});
    EXPECT_EQ(undefined.GetType(), KOBWBRealIntervalValue);
    undefined.Set(KOBWBIntegerInterval{1, 2});
    EXPECT_EQ(undefined.GetType(), KOBWBRealIntervalValue);

    KOBWBValue integerInterval(KOBWBIntegerInterval{0, 9});
    integerInterval.Set(4);
    EXPECT_EQ(integerInterval.GetType(), KOBWBIntegerIntervalValue);
    EXPECT_EQ(integerInterval.GetAsIntegerInterval().upper, 4);

    KOBWBValue fraction(KOBWBCreateFraction(1, 2, 1, 1));
    fraction.Set(KOBWBRealInterval{0, 1});
    EXPECT_EQ(fraction.GetType(), KOBWBRealIntervalValue);

    KOBWBValue integers(KOBWBIntegerEnumValue);
    const int elements[] = {5, 1, 5, 3};
    integers.Set(4, elements);
    ASSERT_EQ(integers.GetIntegerEnum().GetSize(), 3);
    EXPECT_EQ(integers.GetIntegerEnum().Get(0), 1);
    integers.Set(8);
    EXPECT_EQ(integers.GetIntegerEnum().GetSize(), 1);
    EXPECT_EQ(integers.GetIntegerEnum().Get(0), 8);

    KOBWBValue reals(KOBWBRealEnumValue);
    const double realElements[] = {2.0, 1.0, 2.0 + 1e-16};
    reals.Set(3, realElements);
    EXPECT_EQ(reals.GetRealEnum().GetSize(), 2);
    reals.Set(1, static_cast<const double*>(nullptr));
    EXPECT_EQ(reals.GetRealEnum().GetSize(), 2);

    integerInterval.SetIndefinite();
    EXPECT_TRUE(integerInterval.IsIndefinite());
    boolean.SetIndefinite();
    EXPECT_EQ(boolean.GetAsBoolean(), KOBWBUndef);
}

TEST(KOBWBValue, FractionSimplification) {
    const KOBWBFraction reduced = KOBWBValue(KOBWBCreateFraction(6, -4, 0, 1)).GetAsFraction();
    EXPECT_EQ(reduced.numerator, -3);
    EXPECT_EQ(reduced.denominator, 2);
    KOBWBValue halfPi(KOBWBCreateFraction(1, 2, 1, 1));
    halfPi.SimplifyFraction(true);
    EXPECT_EQ(halfPi.GetType(), KOBWBRealValue);
    EXPECT_EQ(halfPi.GetAsReal(), 1.5707963267948966);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(1, 0, 0, 1)).GetAsInteger(), KOBWBSingleInteger_Nil);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(0, 0, 0, 1)).GetAsInteger(), KOBWBSingleInteger_Any);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(0, 5, 3, 1)).GetAsInteger(), 0);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(1, KOBWBSingleInteger_Any, 0, 1)).GetAsReal(),
              KOBWBSingleReal_Any);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(2, 1, KOBWBSingleInteger_Nil, 1)).GetAsInteger(),
              KOBWBSingleInteger_Nil);
    KOBWBValue inverse(KOBWBCreateFraction(180, 1, -1, 1));
    EXPECT_DOUBLE_EQ(inverse.GetAsDouble(), 180 / 3.141592653589793);
    const KOBWBFraction piSquared = KOBWBValue(KOBWBCreateFraction(4, 6, 2, 0)).GetAsFraction();
    EXPECT_EQ(piSquared.numerator, 2);
    EXPECT_EQ(piSquared.denominator, 3);
    EXPECT_EQ(piSquared.powerOfPi, 2);
}

TEST(KOBWBValue, NonIntegralFractionReadAsIntegerIntervalOrBoolean) {
    const KOBWBValue half(KOBWBCreateFraction(1, 2, 0, 1));
    const KOBWBIntegerInterval integers = half.GetAsIntegerInterval();
    const KOBWBIntegerInterval viaReal = KOBWBCreateIntegerInterval(KOBWBRealInterval{0.5, 0.5});
    EXPECT_EQ(integers.lower, viaReal.lower);
    EXPECT_EQ(integers.upper, viaReal.upper);
    EXPECT_EQ(half.GetAsBoolean(), KOBWBTrue);
    const KOBWBValue threePiOverTwo(KOBWBCreateFraction(-3, 2, 1, 1));
    EXPECT_EQ(threePiOverTwo.GetAsBoolean(), KOBWBTrue);
    const KOBWBIntegerInterval nearPi = threePiOverTwo.GetAsIntegerInterval();
    const KOBWBIntegerInterval nearPiViaReal = KOBWBCreateIntegerInterval(threePiOverTwo.GetAsRealInterval());
    EXPECT_EQ(nearPi.lower, nearPiViaReal.lower);
    EXPECT_EQ(nearPi.upper, nearPiViaReal.upper);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(4, 2, 0, 1)).GetAsIntegerInterval().lower, 2);
    EXPECT_EQ(KOBWBValue(KOBWBCreateFraction(0, 3, 1, 1)).GetAsBoolean(), KOBWBFalse);
}

TEST(KOBWBValue, Conversions) {
    EXPECT_EQ(KOBWBValue(KOBWBRealInterval{1, 1 + 1e-15}).GetAsReal(), 1);
    EXPECT_EQ(RealInterval(1, 2).GetAsReal(), KOBWBSingleReal_Any);
    EXPECT_EQ(RealInterval(2, 1).GetAsReal(), KOBWBSingleReal_Nil);
    EXPECT_EQ(KOBWBValue().GetAsDouble(), KOBWBSingleReal_Any);
    EXPECT_EQ(KOBWBValue(KOBWBTrue).GetAsDouble(), 1.0);
    EXPECT_EQ(KOBWBValue(KOBWBContr).GetAsDouble(), KOBWBSingleReal_Nil);
    EXPECT_EQ(KOBWBValue(KOBWBSingleInteger_Any).GetAsRealInterval().upper, KOBWBMaxReal);
    EXPECT_EQ(KOBWBValue(KOBWBSingleInteger_Nil).GetAsRealInterval().lower, KOBWBMaxReal);
    EXPECT_EQ(KOBWBValue(KOBWBIntegerInterval{2, 5}).GetAsInteger(), KOBWBSingleInteger_Any);
    EXPECT_EQ(RealInterval(1.5, 3.5).GetAsIntegerInterval().lower, 2);
    EXPECT_EQ(KOBWBValue(4).GetAsRealEnum().GetRepresentation(), KOBWBEnumList);
    EXPECT_EQ(RealInterval(1, 2).GetAsRealEnum().GetRepresentation(), KOBWBEnumInterval);
    EXPECT_EQ(KOBWBValue().GetAsIntegerEnum().GetRepresentation(), KOBWBEnumAny);
    EXPECT_EQ(RealInterval(2, 1).GetAsIntegerEnum().GetRepresentation(), KOBWBEnumNil);
    EXPECT_EQ(RealInterval(1, 4).GetMiddle(), 2.5);
    EXPECT_EQ(RealInterval(-5, 4).GetMAG(), 5);
    EXPECT_EQ(RealInterval(1, 4).GetWidth(), 3);

    EXPECT_EQ(KOBWBValue(KOBWBIntegerInterval{0, 0}).GetAsBoolean(), KOBWBFalse);
    EXPECT_EQ(KOBWBValue(KOBWBIntegerInterval{1, 3}).GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(KOBWBValue(KOBWBIntegerInterval{-1, 3}).GetAsBoolean(), KOBWBUndef);
    EXPECT_EQ(KOBWBValue(KOBWBIntegerInterval{3, 1}).GetAsBoolean(), KOBWBContr);
    EXPECT_EQ(KOBWBValue(-2).GetAsBoolean(), KOBWBTrue);
    EXPECT_EQ(KOBWBValue().GetAsBoolean(), KOBWBUndef);

    static std::string report;
    const KOBLVRAssertHandler previous = KOBLVRSetAssertHandler(
        [](const char* condition, const char* file, unsigned line) {
            report = std::string(condition) + " " + file + " " + std::to_string(line);
        });
    KOBWBValue(2.5).GetAsBoolean();
    KOBLVRSetAssertHandler(previous);
    EXPECT_EQ(report, "0 WhiteBoxMath/src/KOBWBValue 778");

    EXPECT_TRUE(KOBWBValue(2).IsConvertible(KOBWBBooleanValue));
    EXPECT_FALSE(KOBWBValue(2.0).IsConvertible(KOBWBBooleanValue));
    EXPECT_TRUE(KOBWBValue(KOBWBTrue).IsConvertible(KOBWBIntegerValue));
    EXPECT_FALSE(KOBWBValue(KOBWBTrue).IsConvertible(KOBWBRealIntervalValue));
}

TEST(KOBWBValue, PredicatesByKind) {
    KOBWBEnvironment env;
    EXPECT_TRUE(KOBWBValue().IsEmpty(env));
    EXPECT_TRUE(KOBWBValue().IsExact(env));
    EXPECT_TRUE(KOBWBValue().IsIndefinite());
    EXPECT_TRUE(KOBWBValue(KOBWBSingleInteger_Nil).IsEmpty(env));
    EXPECT_FALSE(KOBWBValue(KOBWBSingleInteger_Any).IsExact(env));
    EXPECT_TRUE(KOBWBValue(KOBWBSingleInteger_Any).IsIndefinite());
    EXPECT_TRUE(KOBWBValue(KOBWBSingleReal_Nil).IsEmpty(env));
    EXPECT_TRUE(KOBWBValue(3.0).IsExact(env));
    EXPECT_TRUE(RealInterval(1 + 1e-15, 1).IsConsistent(env));
    EXPECT_FALSE(RealInterval(1, 1.1).IsExact(env));
    EXPECT_TRUE(KOBWBIsExact(RealInterval(1, 1.1), 0.5));
    EXPECT_TRUE(KOBWBValue(KOBWBContr).IsEmpty(env));
    EXPECT_TRUE(KOBWBValue(KOBWBFalse).IsExact(env));
    EXPECT_FALSE(KOBWBValue(KOBWBUndef).IsExact(env));
    EXPECT_TRUE(KOBWBValue(KOBWBReal_Any).IsIndefinite());
    EXPECT_TRUE(KOBWBValue(KOBWBInteger_Any).IsIndefinite());

    EXPECT_TRUE(KOBWBValue(0).IsEqualTo(env, KOBWBValue(0.0)));
    EXPECT_TRUE(KOBWBValue(KOBWBCreateFraction(1, 2, 0, 1)).IsEqualTo(env, KOBWBValue(0.5)));
    EXPECT_FALSE(KOBWBValue(KOBWBTrue).IsEqualTo(env, KOBWBValue(1)));
    EXPECT_TRUE(KOBWBValue(KOBWBTrue).IsEqualTo(env, KOBWBValue(KOBWBTrue)));
    EXPECT_FALSE(KOBWBValue().IsEqualTo(env, KOBWBValue(1)));
    KOBWBValue a(KOBWBIntegerEnumValue), b(KOBWBRealEnumValue);
    const int ints[] = {1, 3};
    const double reals[] = {1.0, 3.0};
    a.Set(2, ints);
    b.Set(2, reals);
    EXPECT_TRUE(a.IsEqualTo(env, b));
    b.Set(1, reals);
    EXPECT_FALSE(a.IsEqualTo(env, b));
}

TEST(KOBWBValue, SetOperationsKeepTheKind) {
    KOBWBEnvironment env;
    KOBWBValue interval = RealInterval(0, 10);
    EXPECT_TRUE(interval.Intersect(env, RealInterval(2, 20)));
    EXPECT_EQ(interval.GetAsRealInterval().lower, 2);
    EXPECT_EQ(interval.GetAsRealInterval().upper, 10);
    EXPECT_FALSE(interval.Intersect(env, RealInterval(11, 12)));

    KOBWBValue integers(KOBWBIntegerInterval{0, 10});
    integers.Exclude(env, KOBWBValue(KOBWBIntegerInterval{-5, 3}));
    EXPECT_EQ(integers.GetAsIntegerInterval().lower, 4);
    integers.Exclude(env, KOBWBValue(6));
    EXPECT_EQ(integers.GetAsIntegerInterval().lower, 4);
    EXPECT_FALSE(integers.Exclude(env, KOBWBValue(KOBWBInteger_Any)));
    integers.Unite(env, KOBWBValue(KOBWBIntegerInterval{1, 2}));
    EXPECT_EQ(integers.GetAsIntegerInterval().lower, 1);
    EXPECT_EQ(integers.GetAsIntegerInterval().upper, 2);

    KOBWBValue choice(KOBWBIntegerEnumValue);
    const int elements[] = {1, 2, 3, 4};
    choice.Set(4, elements);
    choice.Intersect(env, KOBWBValue(KOBWBIntegerInterval{2, 3}));
    EXPECT_EQ(choice.GetIntegerEnum().GetSize(), 2);
    choice.Exclude(env, KOBWBValue(2));
    ASSERT_EQ(choice.GetIntegerEnum().GetSize(), 1);
    EXPECT_EQ(choice.GetIntegerEnum().Get(0), 3);
    choice.Unite(env, KOBWBValue(9));
    EXPECT_EQ(choice.GetIntegerEnum().GetSize(), 2);

    KOBWBValue boolean(KOBWBUndef);
    boolean.Exclude(env, KOBWBValue(KOBWBFalse));
    EXPECT_EQ(boolean.GetAsBoolean(), KOBWBTrue);
    boolean.Intersect(env, KOBWBValue(KOBWBFalse));
    EXPECT_EQ(boolean.GetAsBoolean(), KOBWBContr);
    boolean.Unite(env, KOBWBValue(KOBWBFalse));
    EXPECT_EQ(boolean.GetAsBoolean(), KOBWBFalse);

    KOBWBValue scalar(5.0);
    scalar.Assign(env, RealInterval(1, 1));
    EXPECT_EQ(scalar.GetType(), KOBWBRealValue);
    EXPECT_EQ(scalar.GetAsReal(), 1.0);
    KOBWBValue undefined;
    undefined.Assign(env, KOBWBValue(KOBWBIntegerInterval{1, 2}));
    EXPECT_EQ(undefined.GetType(), KOBWBIntegerIntervalValue);
    KOBWBValue reals(KOBWBRealEnumValue);
    reals.Assign(env, RealInterval(2, 2));
    EXPECT_EQ(reals.GetRealEnum().GetRepresentation(), KOBWBEnumList);
}
