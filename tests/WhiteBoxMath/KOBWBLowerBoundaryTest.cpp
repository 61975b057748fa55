#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBLimits.h"
#include "KOBWBPowerProjections.h"
#include "KOBWBPowers.h"
#include "KOBWBValue.h"

#include <gtest/gtest.h>

#include <cmath>

// The logarithms and the powers with a real exponent are defined on
// [KOBWBMinReal, KOBWBMaxReal]: an argument is restricted to it, and one wholly below it
// has no value (Nil, bit 1) rather than the value at KOBWBMinReal.

namespace {

using RI = KOBWBRealInterval;

bool IsNil(const RI& r) {
    return !(r.lower <= r.upper);
}

// The value-level result and the error bits of one call on a fresh environment.
template <class F> KOBWBValue Evaluate(F f, unsigned& error) {
    KOBWBEnvironment env;
    const KOBWBValue result = f(env);
    error = env.GetError();
    return result;
}

} // namespace

TEST(KOBWBLowerBoundary, PowersWithARealExponentHaveNoValueBelowTheSmallestReal) {
    for (const double exponent : {0.5, 1.0 / 3, 1.5, -0.5}) {
        SCOPED_TRACE(exponent);
        KOBWBEnvironment env;
        EXPECT_TRUE(IsNil(KOBWBPow(env, RI{0, 0}, RI{exponent, exponent})));
        EXPECT_EQ(env.GetError() & 1u, 1u);
        unsigned error = 0;
        const KOBWBValue point = Evaluate(
            [&](const KOBWBEnvironment& e) {
                return KOBWBPow(e, KOBWBValue(0.0), KOBWBValue(exponent));
            },
            error);
        EXPECT_TRUE(KOBWBIsNilReal(point.GetAsReal()));
        EXPECT_EQ(error & 1u, 1u);
        // Below KOBWBMinReal but above 0 is outside as well.
        KOBWBEnvironment below;
        EXPECT_TRUE(IsNil(KOBWBPow(below, RI{1e-300, 1e-60}, RI{exponent, exponent})));
        EXPECT_EQ(below.GetError() & 1u, 1u);
    }
    // An argument reaching into the domain is restricted to it, without an error.
    KOBWBEnvironment env;
    const RI root = KOBWBPow(env, RI{0, 1}, RI{0.5, 0.5});
    EXPECT_DOUBLE_EQ(root.lower, std::sqrt(KOBWBMinReal));
    EXPECT_DOUBLE_EQ(root.upper, 1);
    EXPECT_EQ(env.GetError(), 0u);
    // An integral exponent is an integer power, defined at 0.
    unsigned error = 0;
    const KOBWBValue square = Evaluate(
        [](const KOBWBEnvironment& e) { return KOBWBPow(e, KOBWBValue(0.0), KOBWBValue(2.0)); },
        error);
    EXPECT_EQ(square.GetAsReal(), 0);
    EXPECT_EQ(error, 0u);
}

TEST(KOBWBLowerBoundary, LogarithmsHaveNoValueBelowTheSmallestReal) {
    const double tiny[] = {0.0, 1e-40, 1e-100, std::exp(-255.0), std::exp(-100.0)};
    for (const double x : tiny) {
        SCOPED_TRACE(x);
        KOBWBEnvironment env;
        EXPECT_TRUE(IsNil(KOBWBLn(env, RI{x, x})));
        EXPECT_TRUE(IsNil(KOBWBLog(env, RI{x, x})));
        EXPECT_EQ(env.GetError() & 1u, 1u);
        unsigned error = 0;
        const KOBWBValue ln = Evaluate(
            [x](const KOBWBEnvironment& e) { return KOBWBLn(e, KOBWBValue(x)); }, error);
        EXPECT_TRUE(KOBWBIsNilReal(ln.GetAsReal()));
        EXPECT_EQ(error & 1u, 1u);
    }
    // ln(exp(-100)) has no value: exp(-100) is a real below KOBWBMinReal.
    KOBWBEnvironment env;
    const KOBWBValue small = KOBWBExp(env, KOBWBValue(-100.0));
    EXPECT_NEAR(small.GetAsReal(), 3.72e-44, 1e-46);
    EXPECT_TRUE(KOBWBIsNilReal(KOBWBLn(env, small).GetAsReal()));
    // At and above KOBWBMinReal, and over an interval reaching into the domain, the
    // logarithm is defined.
    KOBWBEnvironment inside;
    EXPECT_DOUBLE_EQ(KOBWBLn(inside, RI{KOBWBMinReal, KOBWBMinReal}).lower, std::log(KOBWBMinReal));
    const RI restricted = KOBWBLn(inside, RI{-1, 1});
    EXPECT_DOUBLE_EQ(restricted.lower, std::log(KOBWBMinReal));
    EXPECT_DOUBLE_EQ(restricted.upper, 0);
    EXPECT_EQ(inside.GetError(), 0u);
}

TEST(KOBWBLowerBoundary, ProjectionsStayInsideTheDomain) {
    // z = ln x with z below ln KOBWBMinReal: no x the forward function accepts.
    KOBWBEnvironment env;
    EXPECT_TRUE(IsNil(KOBWBInverseLn(env, RI{-115.13, -115.13}, RI{0, 1})));
    EXPECT_EQ(env.GetError() & 1u, 1u);
    KOBWBEnvironment logEnv;
    EXPECT_TRUE(IsNil(KOBWBInverseLog(logEnv, RI{-50, -50}, RI{0, 1})));
    // Every x the forward function maps into z is kept, and nothing below the domain.
    KOBWBEnvironment inside;
    const RI x = KOBWBInverseLn(inside, RI{-88.8, -80}, RI{0, 1});
    EXPECT_EQ(x.lower, KOBWBMinReal);
    EXPECT_GE(x.upper, std::exp(-80.0));
    // x^(1/2) within 1e-14 of 0: the bases from KOBWBMinReal to 1e-28 all qualify.
    const RI base = KOBWBInversePow1(inside, RI{-1e-14, 1e-14}, RI{0, 1}, RI{0.5, 0.5});
    EXPECT_EQ(base.lower, KOBWBMinReal);
    EXPECT_GE(base.upper, 1e-28);
    EXPECT_LE(base.upper, 1.1e-28);
    EXPECT_EQ(inside.GetError(), 0u);
}
