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
#include <vector>

// The inclusion property: every result contains the image of every point of the
// arguments (within KOBWBAbsPrecision relative to the image beyond 1), checked against
// long double references at the bounds and at random points of seeded random arguments,
// at the interval level and at the value level over every numeric kind; and the bounds of
// the monotone functions are those of the long double references.

namespace {

using RI = KOBWBRealInterval;
using II = KOBWBIntegerInterval;
using Env = KOBWBEnvironment;
using Value = KOBWBValue;
using Random = std::mt19937_64;

constexpr long double undefined = std::numeric_limits<long double>::quiet_NaN();
const double stepParameters[] = {-1, 2, 3, -1};

struct UnaryCase {
    std::string name;
    std::function<RI(const Env&, const RI&)> interval;
    std::function<Value(const Env&, const Value&)> value;
    std::function<long double(long double)> reference; // NaN outside the domain
    std::function<II(const Env&, const II&)> integer;  // the integer form, if any
    bool exact;   // no slack: the bounds are widened to hold the exact image
    int monotone; // 1 increasing, -1 decreasing: the bounds are the images of the bounds
};

struct BinaryCase {
    std::string name;
    std::function<RI(const Env&, const RI&, const RI&)> interval;
    std::function<Value(const Env&, const Value&, const Value&)> value;
    std::function<long double(long double, long double)> reference;
    std::function<II(const Env&, const II&, const II&)> integer;
};

template <class F>
UnaryCase Unary(std::string name, F f, std::function<long double(long double)> reference,
                int monotone = 0, bool exact = false) {
    return {std::move(name),
            [f](const Env& e, const RI& x) { return f(e, x); },
            [f](const Env& e, const Value& x) { return f(e, x); },
            std::move(reference),
            nullptr,
            exact,
            monotone};
}

template <class F>
BinaryCase Binary(std::string name, F f,
                  std::function<long double(long double, long double)> reference) {
    return {std::move(name), [f](const Env& e, const RI& a, const RI& b) { return f(e, a, b); },
            [f](const Env& e, const Value& a, const Value& b) { return f(e, a, b); },
            std::move(reference), nullptr};
}

template <class F>
BinaryCase BinaryWithInteger(std::string name, F f,
                             std::function<long double(long double, long double)> reference) {
    BinaryCase c = Binary(std::move(name), f, std::move(reference));
    c.integer = [f](const Env& e, const II& a, const II& b) { return f(e, a, b); };
    return c;
}

long double Within(long double x, long double bound, long double image) {
    return fabsl(x) <= bound ? image : undefined;
}

std::vector<UnaryCase> UnaryCases() {
    std::vector<UnaryCase> cases = {
        Unary(
            "Exp", [](auto& e, auto& x) { return KOBWBExp(e, x); },
            [](long double x) { return expl(x); }, 1),
        Unary(
            "Ln", [](auto& e, auto& x) { return KOBWBLn(e, x); },
            [](long double x) { return x > 0 ? logl(x) : undefined; }, 1),
        Unary(
            "Log", [](auto& e, auto& x) { return KOBWBLog(e, x); },
            [](long double x) { return x > 0 ? log10l(x) : undefined; }, 1),
        Unary(
            "Sqrt", [](auto& e, auto& x) { return KOBWBSqrt(e, x); },
            [](long double x) { return x >= 0 ? sqrtl(x) : undefined; }, 1),
        Unary(
            "Sin", [](auto& e, auto& x) { return KOBWBSin(e, x); },
            [](long double x) { return Within(x, 1e9L, sinl(x)); }),
        Unary(
            "Cos", [](auto& e, auto& x) { return KOBWBCos(e, x); },
            [](long double x) { return Within(x, 1e9L, cosl(x)); }),
        Unary(
            "Tan", [](auto& e, auto& x) { return KOBWBTan(e, x); },
            [](long double x) { return Within(x, 1e9L, tanl(x)); }),
        Unary(
            "Asin", [](auto& e, auto& x) { return KOBWBAsin(e, x); },
            [](long double x) { return Within(x, 1, asinl(x)); }, 1),
        Unary(
            "Acos", [](auto& e, auto& x) { return KOBWBAcos(e, x); },
            [](long double x) { return Within(x, 1, acosl(x)); }, -1),
        Unary(
            "Atan", [](auto& e, auto& x) { return KOBWBAtan(e, x); },
            [](long double x) { return atanl(x); }, 1),
        Unary(
            "Sinh", [](auto& e, auto& x) { return KOBWBSinh(e, x); },
            [](long double x) { return sinhl(x); }, 1),
        Unary(
            "Cosh", [](auto& e, auto& x) { return KOBWBCosh(e, x); },
            [](long double x) { return coshl(x); }),
        Unary(
            "Tanh", [](auto& e, auto& x) { return KOBWBTanh(e, x); },
            [](long double x) { return tanhl(x); }, 1),
        Unary(
            "Asinh", [](auto& e, auto& x) { return KOBWBAsinh(e, x); },
            [](long double x) { return asinhl(x); }, 1),
        Unary(
            "Acosh", [](auto& e, auto& x) { return KOBWBAcosh(e, x); },
            [](long double x) { return x >= 1 ? acoshl(x) : undefined; }, 1),
        Unary(
            "Atanh", [](auto& e, auto& x) { return KOBWBAtanh(e, x); },
            [](long double x) { return Within(x, 1 - 1e-14L, atanhl(x)); }, 1),
        Unary(
            "Ceil", [](auto& e, auto& x) { return KOBWBCeil(e, x); },
            [](long double x) { return ceill(x); }, 1),
        Unary(
            "Floor", [](auto& e, auto& x) { return KOBWBFloor(e, x); },
            [](long double x) { return floorl(x); }, 1),
        Unary(
            "Round", [](auto& e, auto& x) { return KOBWBRound(e, x); },
            [](long double x) { return roundl(x); }, 1),
        Unary(
            "Trunc", [](auto& e, auto& x) { return KOBWBTrunc(e, x); },
            [](long double x) { return truncl(x); }, 1),
        Unary(
            "Step", [](auto& e, auto& x) { return KOBWBStep(e, x, stepParameters); },
            [](long double x) {
                const long double t = std::min(1.0L, std::max(0.0L, (x + 1) / 4));
                return 2 - 3 * t * t * (3 - 2 * t);
            },
            -1),
        Unary(
            "Abs", [](auto& e, auto& x) { return KOBWBAbs(e, x); },
            [](long double x) { return fabsl(x); }),
    };
    cases.back().integer = [](const Env& e, const II& x) { return KOBWBAbs(e, x); };
    for (int n = -3; n <= 5; ++n) {
        cases.push_back(Unary(
            "Pow" + std::to_string(n), [n](auto& e, auto& x) { return KOBWBPow(e, x, n); },
            [n](long double x) { return x == 0 && n < 0 ? undefined : powl(x, n); },
            n > 0 && n % 2 ? 1 : 0));
        if (n >= 0)
            cases.back().integer = [n](const Env& e, const II& x) { return KOBWBPow(e, x, n); };
        if (n == 0) continue;
        const bool odd = n % 2 != 0;
        // The real roots: sign-preserving for an odd index, of x >= 0 for an even one.
        const auto root = [n, odd](long double x) {
            if ((x < 0 && !odd) || (x == 0 && n < 0)) return undefined;
            return x < 0 ? -powl(-x, 1.0L / n) : powl(x, 1.0L / n);
        };
        const std::string index = std::to_string(n);
        cases.push_back(Unary(
            "Root" + index, [n](auto& e, auto& x) { return KOBWBRoot(e, x, n); }, root,
            n > 0 ? 1 : 0, true));
        cases.push_back(Unary(
            "RootPositive" + index, [n](auto& e, auto& x) { return KOBWBRootPositive(e, x, n); },
            [root](long double x) { return x >= 0 ? root(x) : undefined; }, n > 0 ? 1 : -1, true));
        cases.push_back(Unary(
            "RootNegative" + index, [n](auto& e, auto& x) { return KOBWBRootNegative(e, x, n); },
            [root, odd](long double x) {
                return odd ? (x <= 0 ? root(x) : undefined) : (x >= 0 ? -root(x) : undefined);
            },
            0, true));
    }
    return cases;
}

std::vector<BinaryCase> BinaryCases() {
    std::vector<BinaryCase> cases = {
        BinaryWithInteger(
            "Sum", [](auto& e, auto& a, auto& b) { return KOBWBSum(e, a, b); },
            [](long double a, long double b) { return a + b; }),
        BinaryWithInteger(
            "Sub", [](auto& e, auto& a, auto& b) { return KOBWBSub(e, a, b); },
            [](long double a, long double b) { return a - b; }),
        BinaryWithInteger(
            "Mul", [](auto& e, auto& a, auto& b) { return KOBWBMul(e, a, b); },
            [](long double a, long double b) { return a * b; }),
        Binary(
            "Div", [](auto& e, auto& a, auto& b) { return KOBWBDiv(e, a, b); },
            [](long double a, long double b) { return b == 0 ? undefined : a / b; }),
        // The remainder jumps where a / b is an integer, so the reference rounds as the
        // library's double arithmetic does, then stays within the remainder's range, which
        // the cancellation in a - b k may leave by a rounding.
        BinaryWithInteger(
            "Mod", [](auto& e, auto& a, auto& b) { return KOBWBMod(e, a, b); },
            [](long double a, long double b) {
                const double x = static_cast<double>(a), y = static_cast<double>(b);
                if (y == 0) return undefined;
                const double r = x - y * std::floor(x / y);
                return static_cast<long double>(y > 0 ? std::min(std::max(r, 0.0), y)
                                                      : std::max(std::min(r, 0.0), y));
            }),
        BinaryWithInteger(
            "Min", [](auto& e, auto& a, auto& b) { return KOBWBMin(e, a, b); },
            [](long double a, long double b) { return fminl(a, b); }),
        BinaryWithInteger(
            "Max", [](auto& e, auto& a, auto& b) { return KOBWBMax(e, a, b); },
            [](long double a, long double b) { return fmaxl(a, b); }),
        Binary(
            "Pow", [](auto& e, auto& a, auto& b) { return KOBWBPow(e, a, b); },
            [](long double a, long double b) {
                return a >= KOBWBMinReal ? powl(a, b) : undefined;
            }),
        // -0 is the point 0: on the negative x axis the principal angle is Pi.
        Binary(
            "Atan2", [](auto& e, auto& a, auto& b) { return KOBWBAtan2(e, a, b); },
            [](long double y, long double x) {
                return y == 0 && x == 0 ? undefined : atan2l(y + 0.0L, x);
            }),
        Binary(
            "Dim", [](auto& e, auto& a, auto& b) { return KOBWBDim(e, a, b); },
            [](long double a, long double b) { return fmaxl(a - b, 0); }),
        Binary(
            "Sign", [](auto& e, auto& a, auto& b) { return KOBWBSign(e, a, b); },
            [](long double a, long double b) { return b >= 0 ? fabsl(a) : -fabsl(a); }),
    };
    // Dim and Sign have integer forms at the value level only.
    for (BinaryCase* c : {&cases[9], &cases[10]}) {
        const auto value = c->value;
        c->integer = [value](const Env& e, const II& a, const II& b) {
            return value(e, Value(a), Value(b)).GetAsIntegerInterval();
        };
    }
    return cases;
}

// Reals over several scales, with exact integers and zeros among them.
double RandomReal(Random& random) {
    static const double scales[] = {1, 4, 100, 1e6};
    const double scale = scales[random() % 4];
    const double x = std::uniform_real_distribution<double>(-scale, scale)(random);
    switch (random() % 8) {
    case 0:
        return 0.0;
    case 1:
        return std::round(x);
    default:
        return x;
    }
}

RI RandomInterval(Random& random) {
    const double a = RandomReal(random);
    if (random() % 4 == 0) return {a, a};
    if (random() % 3 == 0) return {a, a + std::fabs(a) * 1e-6 + 1e-9};
    const double b = RandomReal(random);
    return {std::min(a, b), std::max(a, b)};
}

int RandomSmallInteger(Random& random) {
    return std::uniform_int_distribution<int>(-12, 12)(random);
}

II RandomIntegerInterval(Random& random) {
    const int a = RandomSmallInteger(random);
    const int b = random() % 3 == 0 ? a : RandomSmallInteger(random);
    return {std::min(a, b), std::max(a, b)};
}

std::vector<long double> Samples(const RI& x, Random& random) {
    std::vector<long double> points = {x.lower, x.upper};
    for (int i = 0; i < 4; ++i)
        points.push_back(x.lower + (x.upper - x.lower) *
                                       std::uniform_real_distribution<double>(0, 1)(random));
    return points;
}

std::vector<long double> Samples(const II& x) {
    std::vector<long double> points;
    for (int n = x.lower; n <= x.upper; ++n)
        points.push_back(n);
    return points;
}

bool InRange(long double image, long double max) {
    return !std::isnan(image) && fabsl(image) <= max;
}

std::string Text(const std::string& name, std::initializer_list<RI> arguments) {
    std::ostringstream text;
    text.precision(17);
    text << name;
    for (const RI& a : arguments)
        text << " [" << a.lower << ", " << a.upper << "]";
    return text.str();
}

// Collects violations and reports the first few, so a broken function shows up once.
class Violations {
public:
    // A real result is the clamped Nil or ordered within [-max, max].
    void CheckWellFormed(const RI& r, const std::string& where) {
        const bool nil = r.lower == KOBWBMaxReal && r.upper == -KOBWBMaxReal;
        if (!nil && !(r.lower <= r.upper && r.lower >= -KOBWBMaxReal && r.upper <= KOBWBMaxReal))
            Report(where + " is not a clamped interval");
    }
    void CheckContains(const RI& r, long double image, bool exact, const std::string& where) {
        if (!InRange(image, KOBWBMaxReal)) return;
        const long double slack = exact ? 0.0L : KOBWBAbsPrecision * std::max(1.0L, fabsl(image));
        if (!(r.lower - slack <= image && image <= r.upper + slack))
            Report(where + ": image " + std::to_string(static_cast<double>(image)) + " outside " +
                   Text("", {r}));
    }
    // The bounds of a monotone function are the images of the argument's bounds, to a few
    // units in the last place (roots: within their widening).
    void CheckTight(const RI& r, long double low, long double high, const std::string& where) {
        if (!InRange(low, KOBWBMaxReal) || !InRange(high, KOBWBMaxReal)) return;
        const auto close = [](double bound, long double image) {
            return fabsl(bound - image) <= 4e-16L * std::max(1.0L, fabsl(image));
        };
        if (!close(r.lower, low) || !close(r.upper, high))
            Report(where + ": bounds not tight " + Text("", {r}));
    }
    void Report(const std::string& text) {
        if (m_count++ < 5) ADD_FAILURE() << text;
    }
    int Count() const { return m_count; }

private:
    int m_count = 0;
};

// The value kinds: 0 Integer, 1 Real, 2 IntegerInterval, 3 RealInterval, 4 IntegerEnum,
// 5 RealEnum, with the points each holds.
struct Operand {
    Value value;
    std::vector<long double> points;
    bool integer;
};

Operand RandomOperand(Random& random, int kind) {
    switch (kind) {
    case 0: {
        const int n = RandomSmallInteger(random);
        return {Value(n), {static_cast<long double>(n)}, true};
    }
    case 1: {
        const double x = RandomReal(random);
        return {Value(x), {x}, false};
    }
    case 2: {
        const II x = RandomIntegerInterval(random);
        return {Value(x), Samples(x), true};
    }
    case 3: {
        const RI x = RandomInterval(random);
        return {Value(x), Samples(x, random), false};
    }
    default: {
        std::vector<double> elements(1 + random() % 4);
        for (double& x : elements)
            x = kind == 4 ? RandomSmallInteger(random) : RandomReal(random);
        Value v(kind == 4 ? KOBWBIntegerEnumValue : KOBWBRealEnumValue);
        v.Set(static_cast<int>(elements.size()), elements.data());
        const KOBWBRealEnum listed = v.GetAsRealEnum();
        std::vector<long double> points;
        for (int i = 0; i < listed.GetSize(); ++i)
            points.push_back(listed.Get(i));
        return {v, points, kind == 4};
    }
    }
}

bool ListsItsPoints(int kind) {
    return kind != 2 && kind != 3;
}
bool IsEnumeration(const Value& v) {
    return v.GetType() == KOBWBIntegerEnumValue || v.GetType() == KOBWBRealEnumValue;
}
bool IsIntegerKind(const Value& v) {
    return v.GetType() == KOBWBIntegerValue || v.GetType() == KOBWBIntegerIntervalValue ||
           v.GetType() == KOBWBIntegerEnumValue;
}
KOBWBEnumRepresentation RepresentationOf(const Value& v) {
    return v.GetType() == KOBWBIntegerEnumValue ? v.GetIntegerEnum().GetRepresentation()
                                                : v.GetRealEnum().GetRepresentation();
}

// A value result holds every image in its hull (no result is exact at this level: single
// numbers and elements are points). Mapping lists gives a list holding each image as an
// element; when no image is in range, points within the tolerance of the domain may
// still keep one, so the result is then a list or nil.
void CheckValueResult(Violations& violations, const Value& result,
                      const std::vector<long double>& images, bool mapsLists,
                      const std::string& where) {
    bool anyImage = false;
    const bool list = IsEnumeration(result) && RepresentationOf(result) == KOBWBEnumList;
    const KOBWBRealEnum elements = result.GetAsRealEnum();
    for (const long double image : images) {
        violations.CheckContains(result.GetAsRealInterval(), image, false, where);
        if (!InRange(image, KOBWBMaxReal)) continue;
        anyImage = true;
        int position = 0;
        if (list && !elements.Find(static_cast<double>(image), position,
                                   KOBWBAbsPrecision * std::max(1.0L, fabsl(image))))
            violations.Report(where + ": an image is not an element");
    }
    const bool nil = IsEnumeration(result) && RepresentationOf(result) == KOBWBEnumNil;
    if (mapsLists && !(list || (!anyImage && nil)))
        violations.Report(where + ": not the list of the images");
}

} // namespace

TEST(KOBWBInclusion, IntervalLevel) {
    Random random(1);
    Env env;
    for (const UnaryCase& f : UnaryCases()) {
        Violations violations;
        for (int i = 0; i < 400; ++i) {
            const RI x = RandomInterval(random);
            const RI r = f.interval(env, x);
            violations.CheckWellFormed(r, Text(f.name, {x}));
            for (const long double p : Samples(x, random))
                violations.CheckContains(r, f.reference(p), f.exact, Text(f.name, {x}));
            if (f.monotone != 0)
                violations.CheckTight(r, f.reference(f.monotone > 0 ? x.lower : x.upper),
                                      f.reference(f.monotone > 0 ? x.upper : x.lower),
                                      Text(f.name, {x}));
            if (!f.integer) continue;
            const II n = RandomIntegerInterval(random);
            const RI ri = KOBWBCreateRealInterval(f.integer(env, n));
            for (const long double p : Samples(n))
                if (InRange(f.reference(p), KOBWBMaxInteger))
                    violations.CheckContains(ri, f.reference(p), true, f.name + " of integers");
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
    }
    for (const BinaryCase& f : BinaryCases()) {
        Violations violations;
        for (int i = 0; i < 400; ++i) {
            const RI a = RandomInterval(random);
            const RI b = RandomInterval(random);
            const RI r = f.interval(env, a, b);
            violations.CheckWellFormed(r, Text(f.name, {a, b}));
            const std::vector<long double> right = Samples(b, random);
            for (const long double p : Samples(a, random))
                for (const long double q : right)
                    violations.CheckContains(r, f.reference(p, q), false, Text(f.name, {a, b}));
            if (!f.integer) continue;
            const II m = RandomIntegerInterval(random);
            const II n = RandomIntegerInterval(random);
            const RI ri = KOBWBCreateRealInterval(f.integer(env, m, n));
            for (const long double p : Samples(m))
                for (const long double q : Samples(n))
                    if (InRange(f.reference(p, q), KOBWBMaxInteger))
                        violations.CheckContains(ri, f.reference(p, q), true,
                                                 f.name + " of integers");
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
    }
}

TEST(KOBWBInclusion, ValueLevelOverEveryKind) {
    Random random(3);
    Env env;
    for (const UnaryCase& f : UnaryCases()) {
        Violations violations;
        for (int i = 0; i < 300; ++i) {
            const int kind = static_cast<int>(random() % 6);
            const Operand x = RandomOperand(random, kind);
            const Value result = f.value(env, x.value);
            std::vector<long double> images;
            for (const long double p : x.points)
                images.push_back(f.reference(p));
            const std::string where = f.name + " of kind " + std::to_string(kind);
            CheckValueResult(violations, result, images, IsEnumeration(x.value), where);
            if (x.integer && f.integer && !IsIntegerKind(result))
                violations.Report(where + ": not an integer kind");
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
    }
    for (const BinaryCase& f : BinaryCases()) {
        Violations violations;
        for (int i = 0; i < 432; ++i) {
            const int kindA = i % 6;
            const int kindB = i / 6 % 6;
            const Operand a = RandomOperand(random, kindA);
            const Operand b = RandomOperand(random, kindB);
            const Value result = f.value(env, a.value, b.value);
            // A single integral exponent makes the power an integer power, of integers for
            // an exponent >= 0.
            const bool integralPower =
                f.name == "Pow" && (kindB == 0 || kindB == 1) && b.points[0] == truncl(b.points[0]);
            const bool integer =
                (f.integer || (integralPower && b.points[0] >= 0)) && a.integer && b.integer;
            std::vector<long double> images;
            for (const long double p : a.points) {
                for (const long double q : b.points) {
                    const long double image = integralPower
                                                  ? (p == 0 && q < 0 ? undefined : powl(p, q))
                                                  : f.reference(p, q);
                    images.push_back(integer && !InRange(image, KOBWBMaxInteger) ? undefined
                                                                                 : image);
                }
            }
            const std::string where =
                f.name + " of kinds " + std::to_string(kindA) + ", " + std::to_string(kindB);
            // A division by an element 0 has the whole line as image: the hull, not a list.
            const bool enumerations = IsEnumeration(a.value) || IsEnumeration(b.value);
            const bool mapsLists =
                enumerations && ListsItsPoints(kindA) && ListsItsPoints(kindB) && f.name != "Div";
            CheckValueResult(violations, result, images, mapsLists, where);
            if (enumerations && !IsEnumeration(result))
                violations.Report(where + ": not an enumeration");
            if (integer && !IsIntegerKind(result))
                violations.Report(where + ": not an integer kind");
        }
        EXPECT_EQ(violations.Count(), 0) << f.name;
    }
    EXPECT_EQ(env.GetError() & 2u, 0u);
}

TEST(KOBWBInclusion, BadKindsAndHostileArgumentsNeverCrash) {
    Env env;
    const double nan = std::nan("");
    const double infinity = std::numeric_limits<double>::infinity();
    const RI hostile[] = {KOBWBReal_Nil,         KOBWBReal_Any,        {nan, nan},
                          {-infinity, infinity}, {infinity, infinity}, {0, nan},
                          {1e300, 1e308},        {-0.0, 0.0},          {2, 1}};
    const II integers[] = {
        {INT_MIN, INT_MAX}, {INT_MIN, INT_MIN}, {INT_MAX, INT_MAX}, KOBWBInteger_Nil, {-1, 0}};
    const Value bad[] = {Value(), Value(KOBWBUndef)};
    Violations violations;
    const auto expectBadKind = [&](const Value& result, const std::string& name) {
        if (env.GetError() != 2u || result.GetType() != KOBWBRealIntervalValue)
            violations.Report(name + " of a bad kind");
        env.ClearError();
    };
    for (const UnaryCase& f : UnaryCases()) {
        for (const RI& x : hostile)
            violations.CheckWellFormed(f.interval(env, x), Text(f.name, {x}));
        for (const II& n : integers)
            if (f.integer) f.integer(env, n);
        env.ClearError();
        for (const Value& v : bad)
            expectBadKind(f.value(env, v), f.name);
    }
    for (const BinaryCase& f : BinaryCases()) {
        for (const RI& a : hostile)
            for (const RI& b : hostile)
                violations.CheckWellFormed(f.interval(env, a, b), Text(f.name, {a, b}));
        for (const II& m : integers)
            for (const II& n : integers)
                if (f.integer) f.integer(env, m, n);
        env.ClearError();
        for (const Value& v : bad)
            expectBadKind(f.value(env, Value(1.5), v), f.name);
    }
    EXPECT_EQ(violations.Count(), 0);
}
