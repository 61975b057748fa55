#include "KOBWBArithmetic.h"
#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBLimits.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBStep.h"
#include "KOBWBTrigonometry.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <functional>
#include <limits>
#include <random>
#include <sstream>
#include <string>
#include <vector>

// The inclusion property: every result contains the image of every point of the
// argument domains (within KOBWBAbsPrecision relative to the image beyond 1), checked
// against long double references at the bounds and at random points of seeded random
// arguments, at the interval level and at the value level over every numeric kind.

namespace {

using RI = KOBWBRealInterval;
using II = KOBWBIntegerInterval;
using Random = std::mt19937_64;

constexpr long double undefined = std::numeric_limits<long double>::quiet_NaN();
const double stepParameters[] = {-1, 2, 3, -1};

struct UnaryCase {
    std::string name;
    std::function<RI(const KOBWBEnvironment&, const RI&)> interval;
    std::function<KOBWBValue(const KOBWBEnvironment&, const KOBWBValue&)> value;
    std::function<long double(long double)> reference;  // NaN outside the domain
    std::function<II(const KOBWBEnvironment&, const II&)> integer;  // the integer form, if any
    bool exact = false;  // no slack: the bounds are widened to hold the exact image
};

struct BinaryCase {
    std::string name;
    std::function<RI(const KOBWBEnvironment&, const RI&, const RI&)> interval;
    std::function<KOBWBValue(const KOBWBEnvironment&, const KOBWBValue&, const KOBWBValue&)> value;
    std::function<long double(long double, long double)> reference;
    std::function<II(const KOBWBEnvironment&, const II&, const II&)> integer;
};

template <class F>
UnaryCase Unary(std::string name, F function, std::function<long double(long double)> reference) {
    return {std::move(name), [function](const KOBWBEnvironment& e, const RI& x) { return function(e, x); },
            [function](const KOBWBEnvironment& e, const KOBWBValue& x) { return function(e, x); },
            std::move(reference), nullptr};
}

long double Inside(long double x, long double low, long double high, long double image) {
    return x >= low && x <= high ? image : undefined;
}

std::vector<UnaryCase> UnaryCases() {
    const long double trig = 1e9L;
    std::vector<UnaryCase> cases = {
        Unary("Exp", [](const auto& e, const auto& x) { return KOBWBExp(e, x); }, [](long double x) { return expl(x); }),
        Unary("Ln", [](const auto& e, const auto& x) { return KOBWBLn(e, x); },
              [](long double x) { return x > 0 ? logl(x) : undefined; }),
        Unary("Log", [](const auto& e, const auto& x) { return KOBWBLog(e, x); },
              [](long double x) { return x > 0 ? log10l(x) : undefined; }),
        Unary("Sqrt", [](const auto& e, const auto& x) { return KOBWBSqrt(e, x); },
              [](long double x) { return x >= 0 ? sqrtl(x) : undefined; }),
        Unary("Sin", [](const auto& e, const auto& x) { return KOBWBSin(e, x); },
              [trig](long double x) { return Inside(x, -trig, trig, sinl(x)); }),
        Unary("Cos", [](const auto& e, const auto& x) { return KOBWBCos(e, x); },
              [trig](long double x) { return Inside(x, -trig, trig, cosl(x)); }),
        Unary("Tan", [](const auto& e, const auto& x) { return KOBWBTan(e, x); },
              [trig](long double x) { return Inside(x, -trig, trig, tanl(x)); }),
        Unary("Asin", [](const auto& e, const auto& x) { return KOBWBAsin(e, x); },
              [](long double x) { return Inside(x, -1, 1, asinl(x)); }),
        Unary("Acos", [](const auto& e, const auto& x) { return KOBWBAcos(e, x); },
              [](long double x) { return Inside(x, -1, 1, acosl(x)); }),
        Unary("Atan", [](const auto& e, const auto& x) { return KOBWBAtan(e, x); }, [](long double x) { return atanl(x); }),
        Unary("Sinh", [](const auto& e, const auto& x) { return KOBWBSinh(e, x); }, [](long double x) { return sinhl(x); }),
        Unary("Cosh", [](const auto& e, const auto& x) { return KOBWBCosh(e, x); }, [](long double x) { return coshl(x); }),
        Unary("Tanh", [](const auto& e, const auto& x) { return KOBWBTanh(e, x); }, [](long double x) { return tanhl(x); }),
        Unary("Asinh", [](const auto& e, const auto& x) { return KOBWBAsinh(e, x); },
              [](long double x) { return asinhl(x); }),
        Unary("Acosh", [](const auto& e, const auto& x) { return KOBWBAcosh(e, x); },
              [](long double x) { return x >= 1 ? acoshl(x) : undefined; }),
        Unary("Atanh", [](const auto& e, const auto& x) { return KOBWBAtanh(e, x); },
              [](long double x) { return Inside(x, -1 + 1e-14L, 1 - 1e-14L, atanhl(x)); }),
        Unary("Ceil", [](const auto& e, const auto& x) { return KOBWBCeil(e, x); }, [](long double x) { return ceill(x); }),
        Unary("Floor", [](const auto& e, const auto& x) { return KOBWBFloor(e, x); },
              [](long double x) { return floorl(x); }),
        Unary("Round", [](const auto& e, const auto& x) { return KOBWBRound(e, x); },
              [](long double x) { return roundl(x); }),
        Unary("Trunc", [](const auto& e, const auto& x) { return KOBWBTrunc(e, x); },
              [](long double x) { return truncl(x); }),
        Unary("Step", [](const auto& e, const auto& x) { return KOBWBStep(e, x, stepParameters); },
              [](long double x) {
                  if (x <= -1) return 2.0L;
                  if (x >= 3) return -1.0L;
                  const long double t = (x + 1) / 4;
                  return 2 - 3 * t * t * (3 - 2 * t);
              }),
    };
    UnaryCase abs = Unary("Abs", [](const auto& e, const auto& x) { return KOBWBAbs(e, x); },
                          [](long double x) { return fabsl(x); });
    abs.integer = [](const KOBWBEnvironment& e, const II& x) { return KOBWBAbs(e, x); };
    cases.push_back(abs);
    for (int n = -3; n <= 5; ++n) {
        UnaryCase power = Unary("Pow" + std::to_string(n), [n](const auto& e, const auto& x) { return KOBWBPow(e, x, n); },
                                [n](long double x) { return x == 0 && n < 0 ? undefined : powl(x, n); });
        if (n >= 0) power.integer = [n](const KOBWBEnvironment& e, const II& x) { return KOBWBPow(e, x, n); };
        cases.push_back(power);
        if (n == 0) continue;
        const bool odd = n % 2 != 0;
        // The real roots: sign-preserving for an odd index, of x >= 0 for an even one.
        const auto root = [n, odd](long double x) {
            if (x < 0 && !odd) return undefined;
            if (x == 0 && n < 0) return undefined;
            return x < 0 ? -powl(-x, 1.0L / n) : powl(x, 1.0L / n);
        };
        UnaryCase principal = Unary("Root" + std::to_string(n),
                                    [n](const auto& e, const auto& x) { return KOBWBRoot(e, x, n); }, root);
        principal.exact = true;
        cases.push_back(principal);
        UnaryCase positive = Unary("RootPositive" + std::to_string(n),
                                   [n](const auto& e, const auto& x) { return KOBWBRootPositive(e, x, n); },
                                   [root](long double x) { return x >= 0 ? root(x) : undefined; });
        positive.exact = true;
        cases.push_back(positive);
        UnaryCase negative = Unary("RootNegative" + std::to_string(n),
                                   [n](const auto& e, const auto& x) { return KOBWBRootNegative(e, x, n); },
                                   [root, odd](long double x) {
                                       if (odd) return x <= 0 ? root(x) : undefined;
                                       return x >= 0 ? -root(x) : undefined;
                                   });
        negative.exact = true;
        cases.push_back(negative);
    }
    return cases;
}

template <class F>
BinaryCase Binary(std::string name, F function, std::function<long double(long double, long double)> reference) {
    return {std::move(name), [function](const KOBWBEnvironment& e, const RI& a, const RI& b) { return function(e, a, b); },
            [function](const KOBWBEnvironment& e, const KOBWBValue& a, const KOBWBValue& b) { return function(e, a, b); },
            std::move(reference), nullptr};
}

template <class F>
BinaryCase BinaryWithInteger(std::string name, F function, std::function<long double(long double, long double)> reference) {
    BinaryCase c = Binary(std::move(name), function, std::move(reference));
    c.integer = [function](const KOBWBEnvironment& e, const II& a, const II& b) { return function(e, a, b); };
    return c;
}

std::vector<BinaryCase> BinaryCases() {
    std::vector<BinaryCase> cases = {
        BinaryWithInteger("Sum", [](const auto& e, const auto& a, const auto& b) { return KOBWBSum(e, a, b); },
                          [](long double a, long double b) { return a + b; }),
        BinaryWithInteger("Sub", [](const auto& e, const auto& a, const auto& b) { return KOBWBSub(e, a, b); },
                          [](long double a, long double b) { return a - b; }),
        BinaryWithInteger("Mul", [](const auto& e, const auto& a, const auto& b) { return KOBWBMul(e, a, b); },
                          [](long double a, long double b) { return a * b; }),
        Binary("Div", [](const auto& e, const auto& a, const auto& b) { return KOBWBDiv(e, a, b); },
               [](long double a, long double b) { return b == 0 ? undefined : a / b; }),
        // The remainder in the library's own double arithmetic: it jumps where a / b
        // is an integer, so the reference must round as the bounds do.
        BinaryWithInteger("Mod", [](const auto& e, const auto& a, const auto& b) { return KOBWBMod(e, a, b); },
                          [](long double a, long double b) {
                              const double x = static_cast<double>(a);
                              const double y = static_cast<double>(b);
                              return y == 0 ? undefined : static_cast<long double>(x - y * std::floor(x / y));
                          }),
        BinaryWithInteger("Min", [](const auto& e, const auto& a, const auto& b) { return KOBWBMin(e, a, b); },
                          [](long double a, long double b) { return fminl(a, b); }),
        BinaryWithInteger("Max", [](const auto& e, const auto& a, const auto& b) { return KOBWBMax(e, a, b); },
                          [](long double a, long double b) { return fmaxl(a, b); }),
        Binary("Pow", [](const auto& e, const auto& a, const auto& b) { return KOBWBPow(e, a, b); },
               [](long double a, long double b) { return a >= KOBWBMinReal ? powl(a, b) : undefined; }),
        Binary("Atan2", [](const auto& e, const auto& a, const auto& b) { return KOBWBAtan2(e, a, b); },
               // -0 is the point 0: on the negative x axis the principal angle is Pi.
               [](long double y, long double x) { return y == 0 && x == 0 ? undefined : atan2l(y + 0.0L, x); }),
        Binary("Dim", [](const auto& e, const auto& a, const auto& b) { return KOBWBDim(e, a, b); },
               [](long double a, long double b) { return fmaxl(a - b, 0); }),
        Binary("Sign", [](const auto& e, const auto& a, const auto& b) { return KOBWBSign(e, a, b); },
               [](long double a, long double b) { return b >= 0 ? fabsl(a) : -fabsl(a); }),
    };
    // Dim and Sign have integer forms at the value level only.
    cases[9].integer = [](const KOBWBEnvironment& e, const II& a, const II& b) {
        return KOBWBValue(KOBWBDim(e, KOBWBValue(a), KOBWBValue(b))).GetAsIntegerInterval();
    };
    cases[10].integer = [](const KOBWBEnvironment& e, const II& a, const II& b) {
        return KOBWBValue(KOBWBSign(e, KOBWBValue(a), KOBWBValue(b))).GetAsIntegerInterval();
    };
    return cases;
}

// Random reals over several scales, with some exact integers and zeros among them.
double RandomReal(Random& random) {
    static const double scales[] = {1, 4, 100, 1e6};
    const double scale = scales[random() % 4];
    switch (random() % 8) {
    case 0: return 0.0;
    case 1: return std::round(std::uniform_real_distribution<double>(-scale, scale)(random));
    default: return std::uniform_real_distribution<double>(-scale, scale)(random);
    }
}

RI RandomInterval(Random& random) {
    const double a = RandomReal(random);
    switch (random() % 4) {
    case 0: return {a, a};
    case 1: return {a, a + std::fabs(a) * 1e-6 + 1e-9};
    default: {
        const double b = RandomReal(random);
        return {std::min(a, b), std::max(a, b)};
    }
    }
}

II RandomIntegerInterval(Random& random) {
    std::uniform_int_distribution<int> small(-12, 12);
    const int a = small(random);
    const int b = random() % 3 == 0 ? a : small(random);
    return {std::min(a, b), std::max(a, b)};
}

// The bounds and a few points between them.
std::vector<long double> Samples(const RI& x, Random& random) {
    std::vector<long double> points = {x.lower, x.upper};
    std::uniform_real_distribution<double> inside(x.lower, x.upper);
    for (int i = 0; i < 4; ++i) points.push_back(x.lower < x.upper ? inside(random) : x.lower);
    return points;
}

std::vector<long double> Samples(const II& x) {
    std::vector<long double> points;
    for (int n = x.lower; n <= x.upper; ++n) points.push_back(n);
    return points;
}

// Collects violations and reports the first ones, so a broken function shows up once.
class Violations {
public:
    // A real result must be the clamped Nil or ordered within [-max, max].
    void CheckWellFormed(const RI& r, const std::string& where) {
        const bool nil = r.lower == KOBWBMaxReal && r.upper == -KOBWBMaxReal;
        if (!nil && !(r.lower <= r.upper && r.lower >= -KOBWBMaxReal && r.upper <= KOBWBMaxReal))
            Report(where + " is not a clamped interval");
    }

    void CheckContains(const RI& r, long double image, bool exact, const std::string& where) {
        if (std::isnan(image) || fabsl(image) > KOBWBMaxReal) return;
        const long double slack = exact ? 0.0L : KOBWBAbsPrecision * std::max(1.0L, fabsl(image));
        if (r.lower - slack <= image && image <= r.upper + slack) return;
        std::ostringstream text;
        text.precision(17);
        text << where << ": image " << static_cast<double>(image) << " outside [" << r.lower << ", " << r.upper << "]";
        Report(text.str());
    }

    void Report(const std::string& text) {
        if (m_count++ < 5) ADD_FAILURE() << text;
    }

    int Count() const { return m_count; }

private:
    int m_count = 0;
};

std::string Describe(const std::string& name, const RI& x) {
    std::ostringstream text;
    text.precision(17);
    text << name << "([" << x.lower << ", " << x.upper << "])";
    return text.str();
}

std::string Describe(const std::string& name, const RI& a, const RI& b) {
    std::ostringstream text;
    text.precision(17);
    text << name << "([" << a.lower << ", " << a.upper << "], [" << b.lower << ", " << b.upper << "])";
    return text.str();
}

// The value kinds exercised, with the points each of them holds.
struct Operand {
    KOBWBValue value;
    std::vector<long double> points;
    bool integer;
};

Operand RandomOperand(Random& random, int kind) {
    switch (kind) {
    case 0: {
        const int n = std::uniform_int_distribution<int>(-12, 12)(random);
        return {KOBWBValue(n), {static_cast<long double>(n)}, true};
    }
    case 1: {
        const double x = RandomReal(random);
        return {KOBWBValue(x), {x}, false};
    }
    case 2: {
        const II x = RandomIntegerInterval(random);
        return {KOBWBValue(x), Samples(x), true};
    }
    case 3: {
        const RI x = RandomInterval(random);
        return {KOBWBValue(x), Samples(x, random), false};
    }
    case 4: {
        std::vector<int> elements(1 + random() % 4);
        for (int& n : elements) n = std::uniform_int_distribution<int>(-12, 12)(random);
        KOBWBValue v(KOBWBIntegerEnumValue);
        v.Set(static_cast<int>(elements.size()), elements.data());
        std::vector<long double> points;
        for (int i = 0; i < v.GetIntegerEnum().GetSize(); ++i) points.push_back(v.GetIntegerEnum().Get(i));
        return {v, points, true};
    }
    default: {
        std::vector<double> elements(1 + random() % 4);
        for (double& x : elements) x = RandomReal(random);
        KOBWBValue v(KOBWBRealEnumValue);
        v.Set(static_cast<int>(elements.size()), elements.data());
        std::vector<long double> points;
        for (int i = 0; i < v.GetRealEnum().GetSize(); ++i) points.push_back(v.GetRealEnum().Get(i));
        return {v, points, false};
    }
    }
}

bool IsEnumeration(const KOBWBValue& v) {
    return v.GetType() == KOBWBIntegerEnumValue || v.GetType() == KOBWBRealEnumValue;
}

bool IsList(const KOBWBValue& v) {
    return (v.GetType() == KOBWBRealEnumValue && v.GetRealEnum().GetRepresentation() == KOBWBEnumList) ||
           (v.GetType() == KOBWBIntegerEnumValue && v.GetIntegerEnum().GetRepresentation() == KOBWBEnumList);
}

// Single numbers and enumerations list their points (kinds 0, 1, 4 and 5).
bool ListsItsPoints(int kind) { return kind != 2 && kind != 3; }

bool IsNilEnumeration(const KOBWBValue& v) {
    return (v.GetType() == KOBWBRealEnumValue && v.GetRealEnum().GetRepresentation() == KOBWBEnumNil) ||
           (v.GetType() == KOBWBIntegerEnumValue && v.GetIntegerEnum().GetRepresentation() == KOBWBEnumNil);
}

// The enumeration expected of mapping lists: a list of the images. When no point has an
// image within the library's reals, points within the tolerance of the domain may still
// keep one, so the result is a list or nil.
bool IsMappedList(const KOBWBValue& result, const std::vector<long double>& images) {
    for (const long double image : images)
        if (!std::isnan(image) && fabsl(image) <= KOBWBMaxReal) return IsList(result);
    return IsList(result) || IsNilEnumeration(result);
}

bool IsIntegerKind(const KOBWBValue& v) {
    const KOBWBValueType type = v.GetType();
    return type == KOBWBIntegerValue || type == KOBWBIntegerIntervalValue || type == KOBWBIntegerEnumValue;
}

// A value result holds every image in its hull; an enumeration listing its elements
// holds each image as an element. Single numbers and elements are points (the middle of
// a widened root), so no value result is exact.
void CheckValueResult(Violations& violations, const KOBWBValue& result, const std::vector<long double>& images,
                      const std::string& where) {
    const RI hull = result.GetAsRealInterval();
    const bool list = IsList(result);
    for (const long double image : images) {
        violations.CheckContains(hull, image, false, where);
        if (!list || std::isnan(image) || fabsl(image) > KOBWBMaxReal) continue;
        const KOBWBRealEnum elements = result.GetAsRealEnum();
        int position = 0;
        const double slack = KOBWBAbsPrecision * std::max(1.0L, fabsl(image));
        if (!elements.Find(static_cast<double>(image), position, slack)) violations.Report(where + ": an image is not an element");
    }
}

bool OutOfIntegerRange(long double image) { return !std::isnan(image) && fabsl(image) > KOBWBMaxInteger; }

} // namespace

TEST(KOBWBInclusion, UnaryIntervalLevel) {
    Random random(1);
    KOBWBEnvironment env;
    for (const UnaryCase& f : UnaryCases()) {
        Violations violations;
        for (int i = 0; i < 400; ++i) {
            const RI x = RandomInterval(random);
            const RI r = f.interval(env, x);
            violations.CheckWellFormed(r, Describe(f.name, x));
            for (const long double p : Samples(x, random)) violations.CheckContains(r, f.reference(p), f.exact, Describe(f.name, x));
            if (!f.integer) continue;
            const II n = RandomIntegerInterval(random);
            const II ri = f.integer(env, n);
            for (const long double p : Samples(n)) {
                const long double image = f.reference(p);
                if (!OutOfIntegerRange(image)) violations.CheckContains(KOBWBCreateRealInterval(ri), image, true, f.name + " integer");
            }
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
    }
}

TEST(KOBWBInclusion, BinaryIntervalLevel) {
    Random random(2);
    KOBWBEnvironment env;
    for (const BinaryCase& f : BinaryCases()) {
        Violations violations;
        for (int i = 0; i < 400; ++i) {
            const RI a = RandomInterval(random);
            const RI b = RandomInterval(random);
            const RI r = f.interval(env, a, b);
            violations.CheckWellFormed(r, Describe(f.name, a, b));
            const std::vector<long double> left = Samples(a, random);
            const std::vector<long double> right = Samples(b, random);
            for (const long double p : left)
                for (const long double q : right) violations.CheckContains(r, f.reference(p, q), false, Describe(f.name, a, b));
            if (!f.integer) continue;
            const II m = RandomIntegerInterval(random);
            const II n = RandomIntegerInterval(random);
            const RI ri = KOBWBCreateRealInterval(f.integer(env, m, n));
            for (const long double p : Samples(m))
                for (const long double q : Samples(n)) {
                    const long double image = f.reference(p, q);
                    if (!OutOfIntegerRange(image)) violations.CheckContains(ri, image, true, f.name + " integer");
                }
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
    }
}

TEST(KOBWBInclusion, UnaryValueLevelOverEveryKind) {
    Random random(3);
    KOBWBEnvironment env;
    for (const UnaryCase& f : UnaryCases()) {
        Violations violations;
        for (int i = 0; i < 300; ++i) {
            const int kind = static_cast<int>(random() % 6);
            const Operand x = RandomOperand(random, kind);
            const KOBWBValue result = f.value(env, x.value);
            std::vector<long double> images;
            for (const long double p : x.points) images.push_back(f.reference(p));
            const std::string where = f.name + " of kind " + std::to_string(kind);
            CheckValueResult(violations, result, images, where);
            if (IsEnumeration(x.value) && !IsMappedList(result, images)) violations.Report(where + ": not a list");
            if (x.integer && f.integer && !IsIntegerKind(result)) violations.Report(where + ": not an integer kind");
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
        EXPECT_EQ(env.GetError() & 2u, 0u) << f.name;
        env.ClearError();
    }
}

TEST(KOBWBInclusion, BinaryValueLevelOverEveryPairOfKinds) {
    Random random(4);
    KOBWBEnvironment env;
    for (const BinaryCase& f : BinaryCases()) {
        Violations violations;
        for (int kindA = 0; kindA < 6; ++kindA) {
            for (int kindB = 0; kindB < 6; ++kindB) {
                for (int i = 0; i < 12; ++i) {
                    const Operand a = RandomOperand(random, kindA);
                    const Operand b = RandomOperand(random, kindB);
                    const KOBWBValue result = f.value(env, a.value, b.value);
                    // A single integral exponent makes the power an integer power, which
                    // keeps integers for an exponent >= 0.
                    const bool integralPower = f.name == "Pow" && ListsItsPoints(kindB) && !IsEnumeration(b.value) &&
                                               b.points[0] == truncl(b.points[0]);
                    const bool integerForm = f.integer || (integralPower && b.points[0] >= 0);
                    const bool integer = integerForm && a.integer && b.integer;
                    std::vector<long double> images;
                    for (const long double p : a.points)
                        for (const long double q : b.points) {
                            const long double image =
                                integralPower ? (p == 0 && q < 0 ? undefined : powl(p, q)) : f.reference(p, q);
                            images.push_back(integer && OutOfIntegerRange(image) ? undefined : image);
                        }
                    const std::string where = f.name + " of kinds " + std::to_string(kindA) + ", " + std::to_string(kindB);
                    CheckValueResult(violations, result, images, where);
                    // Lists map to lists, but for a division by an element 0, whose image is
                    // the whole line.
                    const bool enumerations = IsEnumeration(a.value) || IsEnumeration(b.value);
                    const bool lists = ListsItsPoints(kindA) && ListsItsPoints(kindB) && f.name != "Div";
                    if (enumerations && !(lists ? IsMappedList(result, images) : IsEnumeration(result)))
                        violations.Report(where + ": not the expected enumeration");
                    if (integer && !IsIntegerKind(result)) violations.Report(where + ": not an integer kind");
                }
            }
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
        EXPECT_EQ(env.GetError() & 2u, 0u) << f.name;
        env.ClearError();
    }
}

TEST(KOBWBInclusion, BadKindsAndHostileArgumentsNeverCrash) {
    KOBWBEnvironment env;
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    const RI hostile[] = {KOBWBReal_Nil, KOBWBReal_Any, {nan, nan}, {-infinity, infinity}, {infinity, infinity},
                          {0, nan}, {1e300, 1e308}, {-0.0, 0.0}, {2, 1}};
    const KOBWBValue bad[] = {KOBWBValue(), KOBWBValue(KOBWBUndef)};
    const II integers[] = {{INT_MIN, INT_MAX}, {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, KOBWBInteger_Nil, {-1, 0}};
    Violations violations;
    for (const UnaryCase& f : UnaryCases()) {
        for (const RI& x : hostile) violations.CheckWellFormed(f.interval(env, x), Describe(f.name, x));
        for (const KOBWBValue& v : bad) {
            env.ClearError();
            const KOBWBValue result = f.value(env, v);
            if (env.GetError() != 2u || result.GetType() != KOBWBRealIntervalValue) violations.Report(f.name + " of a bad kind");
        }
        if (f.integer)
            for (const II& n : integers) f.integer(env, n);
    }
    for (const BinaryCase& f : BinaryCases()) {
        for (const RI& a : hostile)
            for (const RI& b : hostile) violations.CheckWellFormed(f.interval(env, a, b), Describe(f.name, a, b));
        for (const KOBWBValue& v : bad) {
            env.ClearError();
            const KOBWBValue result = f.value(env, KOBWBValue(1.5), v);
            if (env.GetError() != 2u || result.GetType() != KOBWBRealIntervalValue) violations.Report(f.name + " of a bad kind");
        }
        if (f.integer)
            for (const II& m : integers)
                for (const II& n : integers) f.integer(env, m, n);
    }
    EXPECT_EQ(violations.Count(), 0);
}
