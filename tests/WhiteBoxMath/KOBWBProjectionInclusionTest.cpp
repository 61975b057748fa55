#include "KOBWBArithmeticProjections.h"
#include "KOBWBEnvironment.h"
#include "KOBWBLimits.h"
#include "KOBWBPowerProjections.h"
#include "KOBWBRoundingProjections.h"
#include "KOBWBTrigonometryProjections.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <random>
#include <string>
#include <vector>

// Inclusion of the projections, by sampling: for random boxes and random points of
// them whose image, computed in double, lies in the result domain, every point stays
// in the narrowed argument; and the narrowed argument is never wider than the input.

namespace {

using RI = KOBWBRealInterval;
using Env = KOBWBEnvironment;
using Random = std::mt19937_64;
using Unary = std::function<double(double)>;
using Binary = std::function<double(double, double)>;
using UnaryProjection = std::function<RI(const Env&, const RI&, const RI&)>;
using BinaryProjection = std::function<RI(const Env&, const RI&, const RI&, const RI&)>;

constexpr int boxes = 2000;
constexpr int pointsPerBox = 40;

struct Range {
    double lower;
    double upper;
};

struct UnaryCase {
    std::string name;
    Unary f;
    UnaryProjection projection;
    Range x;
};

struct BinaryCase {
    std::string name;
    Binary f;
    BinaryProjection first;
    BinaryProjection second;
    Range x;
    Range y;
};

// A random box inside the range: sometimes a point, sometimes narrow, sometimes wide.
RI RandomBox(Random& random, const Range& range) {
    std::uniform_real_distribution<double> where(range.lower, range.upper);
    double a = where(random);
    double b = where(random);
    const int shape = static_cast<int>(random() % 4);
    if (shape == 0) b = a;
    if (shape == 1) b = a + (b - a) * 1e-3;
    return {std::min(a, b), std::max(a, b)};
}

double RandomPoint(Random& random, const RI& box) {
    const int which = static_cast<int>(random() % 8);
    if (which == 0) return box.lower;
    if (which == 1) return box.upper;
    return std::uniform_real_distribution<double>(box.lower, box.upper)(random);
}

// A result domain around the image of a random point, so that many samples fall in it.
RI RandomResult(Random& random, double image, double spread) {
    if (!std::isfinite(image)) return KOBWBReal_Any;
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    const int shape = static_cast<int>(random() % 4);
    if (shape == 0) return {image, image};
    const double below = unit(random) * spread;
    const double above = unit(random) * spread;
    return {image - below, image + above};
}

// Whether the projection cut something off, which a projection that answers its
// argument unchanged never does.
bool Narrower(const RI& narrowed, const RI& box) {
    return !(narrowed.lower <= narrowed.upper) || narrowed.lower > box.lower ||
           narrowed.upper < box.upper;
}

bool Inside(double v, const RI& box) {
    return v >= box.lower && v <= box.upper;
}

bool InsideOrEqual(const RI& inner, const RI& outer) {
    if (!(inner.lower <= inner.upper)) return true;
    return inner.lower >= outer.lower && inner.upper <= outer.upper;
}

std::string Text(const RI& a) {
    return "[" + std::to_string(a.lower) + ", " + std::to_string(a.upper) + "]";
}

double Signed(double a, double b) {
    return b >= 0 ? std::fabs(a) : -std::fabs(a);
}

std::vector<UnaryCase> UnaryCases() {
    const double pi = 3.141592653589793;
    return {
        {"abs",
         [](double x) { return std::fabs(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAbs(e, z, x); },
         {-10, 10}},
        {"sqr",
         [](double x) { return x * x; },
         [](auto& e, auto& z, auto& x) { return KOBWBInversePow1(e, z, x, 2); },
         {-10, 10}},
        {"cube",
         [](double x) { return x * x * x; },
         [](auto& e, auto& z, auto& x) { return KOBWBInversePow1(e, z, x, 3); },
         {-10, 10}},
        {"pow-2",
         [](double x) { return 1 / (x * x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInversePow1(e, z, x, -2); },
         {-10, 10}},
        {"pow-3",
         [](double x) { return 1 / (x * x * x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInversePow1(e, z, x, -3); },
         {-10, 10}},
        {"sqrt",
         [](double x) { return std::sqrt(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseSqrt(e, z, x); },
         {0, 100}},
        {"cbrt",
         [](double x) { return std::cbrt(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseRoot(e, z, x, 3); },
         {-100, 100}},
        {"negative square root",
         [](double x) { return -std::sqrt(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseRoot(e, z, x, 2); },
         {0, 100}},
        {"exp",
         [](double x) { return std::exp(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseExp(e, z, x); },
         {-800, 50}},
        {"ln",
         [](double x) { return std::log(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseLn(e, z, x); },
         {1e-6, 1e6}},
        {"log",
         [](double x) { return std::log10(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseLog(e, z, x); },
         {1e-6, 1e6}},
        {"sin",
         [](double x) { return std::sin(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseSin(e, z, x); },
         {-50, 50}},
        {"cos",
         [](double x) { return std::cos(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseCos(e, z, x); },
         {-50, 50}},
        {"tan",
         [](double x) { return std::tan(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseTan(e, z, x); },
         {-20, 20}},
        {"sin far away",
         [](double x) { return std::sin(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseSin(e, z, x); },
         {1e6, 1e6 + 30}},
        {"asin",
         [](double x) { return std::asin(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAsin(e, z, x); },
         {-1, 1}},
        {"asin other branch",
         [pi](double x) { return pi - std::asin(x) + 2 * pi; },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAsin(e, z, x); },
         {-1, 1}},
        {"acos",
         [](double x) { return std::acos(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAcos(e, z, x); },
         {-1, 1}},
        {"atan",
         [](double x) { return std::atan(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAtan(e, z, x); },
         {-100, 100}},
        {"sinh",
         [](double x) { return std::sinh(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseSinh(e, z, x); },
         {-20, 20}},
        {"cosh",
         [](double x) { return std::cosh(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseCosh(e, z, x); },
         {-20, 20}},
        {"tanh",
         [](double x) { return std::tanh(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseTanh(e, z, x); },
         {-30, 30}},
        {"asinh",
         [](double x) { return std::asinh(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAsinh(e, z, x); },
         {-100, 100}},
        {"acosh",
         [](double x) { return std::acosh(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAcosh(e, z, x); },
         {1, 100}},
        {"atanh",
         [](double x) { return std::atanh(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseAtanh(e, z, x); },
         {-0.999, 0.999}},
        {"floor",
         [](double x) { return std::floor(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseFloor(e, z, x); },
         {-10, 10}},
        {"ceil",
         [](double x) { return std::ceil(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseCeil(e, z, x); },
         {-10, 10}},
        {"round",
         [](double x) { return std::round(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseRound(e, z, x); },
         {-10, 10}},
        {"trunc",
         [](double x) { return std::trunc(x); },
         [](auto& e, auto& z, auto& x) { return KOBWBInverseTrunc(e, z, x); },
         {-10, 10}},
    };
}

std::vector<BinaryCase> BinaryCases() {
    return {
        {"sum",
         [](double x, double y) { return x + y; },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseSum1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseSum2(e, z, x, y); },
         {-1e3, 1e3},
         {-1e3, 1e3}},
        {"difference",
         [](double x, double y) { return x - y; },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseSub1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseSub2(e, z, x, y); },
         {-1e3, 1e3},
         {-1e3, 1e3}},
        {"product",
         [](double x, double y) { return x * y; },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseMul1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseMul2(e, z, x, y); },
         {-10, 10},
         {-10, 10}},
        {"quotient",
         [](double x, double y) { return x / y; },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseDiv1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseDiv2(e, z, x, y); },
         {-10, 10},
         {-10, 10}},
        {"min",
         [](double x, double y) { return std::min(x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseMin1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseMin2(e, z, x, y); },
         {-10, 10},
         {-10, 10}},
        {"max",
         [](double x, double y) { return std::max(x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseMax1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseMax2(e, z, x, y); },
         {-10, 10},
         {-10, 10}},
        {"sign",
         Signed,
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseSign1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInverseSign2(e, z, x, y); },
         {-10, 10},
         {-10, 10}},
        {"power",
         [](double x, double y) { return std::pow(x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInversePow1(e, z, x, y); },
         [](auto& e, auto& z, auto& x, auto& y) { return KOBWBInversePow2(e, z, x, y); },
         {1e-3, 20},
         {-5, 5}},
        {"atan2",
         [](double y, double x) { return std::atan2(y, x); },
         [](auto& e, auto& z, auto& y, auto& x) { return KOBWBInverseAtan21(e, z, y, x); },
         [](auto& e, auto& z, auto& y, auto& x) { return KOBWBInverseAtan22(e, z, y, x); },
         {-10, 10},
         {-10, 10}},
    };
}

TEST(KOBWBProjectionInclusionTest, UnaryProjectionsKeepEverySolution) {
    Random random(12);
    for (const UnaryCase& c : UnaryCases()) {
        int checked = 0;
        int cut = 0;
        for (int b = 0; b < boxes; ++b) {
            const RI x = RandomBox(random, c.x);
            const double image = c.f(RandomPoint(random, x));
            const RI z = RandomResult(random, image, std::fabs(image) * 0.1 + 0.1);
            const Env environment;
            const RI narrowed = c.projection(environment, z, x);
            ASSERT_TRUE(InsideOrEqual(narrowed, x))
                << c.name << " widened " << Text(x) << " to " << Text(narrowed);
            cut += Narrower(narrowed, x);
            for (int p = 0; p < pointsPerBox; ++p) {
                const double point = RandomPoint(random, x);
                if (!Inside(c.f(point), z)) continue;
                ++checked;
                ASSERT_TRUE(Inside(point, narrowed))
                    << c.name << " lost " << point << " of " << Text(x) << " for z " << Text(z)
                    << ": " << Text(narrowed);
            }
        }
        EXPECT_GT(checked, boxes) << c.name;
        EXPECT_GT(cut, boxes / 10) << c.name;
    }
}

TEST(KOBWBProjectionInclusionTest, BinaryProjectionsKeepEverySolution) {
    Random random(21);
    for (const BinaryCase& c : BinaryCases()) {
        int checked = 0;
        int cut = 0;
        for (int b = 0; b < boxes; ++b) {
            const RI x = RandomBox(random, c.x);
            const RI y = RandomBox(random, c.y);
            const double image = c.f(RandomPoint(random, x), RandomPoint(random, y));
            const RI z = RandomResult(random, image, std::fabs(image) * 0.1 + 0.1);
            const Env environment;
            const RI first = c.first(environment, z, x, y);
            const RI second = c.second(environment, z, x, y);
            ASSERT_TRUE(InsideOrEqual(first, x))
                << c.name << " widened " << Text(x) << " to " << Text(first);
            ASSERT_TRUE(InsideOrEqual(second, y))
                << c.name << " widened " << Text(y) << " to " << Text(second);
            cut += Narrower(first, x) || Narrower(second, y);
            for (int p = 0; p < pointsPerBox; ++p) {
                const double u = RandomPoint(random, x);
                const double v = RandomPoint(random, y);
                const double w = c.f(u, v);
                if (!std::isfinite(w) || !Inside(w, z)) continue;
                ++checked;
                ASSERT_TRUE(Inside(u, first) && Inside(v, second))
                    << c.name << " lost (" << u << ", " << v << ") of " << Text(x) << " x "
                    << Text(y) << " for z " << Text(z) << ": " << Text(first) << " x "
                    << Text(second);
            }
        }
        EXPECT_GT(checked, boxes) << c.name;
        EXPECT_GT(cut, boxes / 10) << c.name;
    }
}

} // namespace
