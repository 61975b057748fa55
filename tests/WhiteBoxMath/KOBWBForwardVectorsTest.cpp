#include "ItlVectors.h"
#include "KOBWBArithmetic.h"
#include "KOBWBEnvironment.h"
#include "KOBWBExponentials.h"
#include "KOBWBHyperbolic.h"
#include "KOBWBPowers.h"
#include "KOBWBRounding.h"
#include "KOBWBTrigonometry.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <functional>
#include <utility>
#include <iostream>
#include <map>
#include <string>
#include <vector>

// The forward vectors of the interval community's test suite (libieeep1788_elem.itl and
// atan2.itl in ../shared/itf1788 beside the project), run against the interval
// functions they cover. Numbers, [entire], [empty] and decorations are read as
// ItlVectors.h says; the comparison is its tolerance of a few units of rounding.
//
// Mapping onto the library: add, sub, mul, div, sqrt, exp, log (natural), log10,
// the trigonometric and hyperbolic functions and their inverses, atan2, ceil, floor,
// trunc, abs, min and max go to the function of the same meaning; neg x to 0 - x,
// recip x to 1 / x, sqr x to x^2, pown to the integer power, pow to the real power,
// fma to a sum of a product, roundTiesToAway to KOBWBRound. pos, exp2, exp10, log2,
// roundTiesToEven and sign (the signum, which the library does not have: its
// KOBWBSign is the transfer of a sign) have no counterpart and are skipped, counted.
//
// A result that is not the expected one within the tolerance is counted "by design"
// when the library's documented design explains it, under its reason:
// - a divisor holding 0 gives the whole line (there is no division into two pieces);
// - infinity is the finite KOBWBMaxReal: the result differs only at bounds that are
//   infinite, or 0 reached through an infinite argument (x / infinity);
// - an argument outside the domain by less than the environment's tolerance keeps the
//   domain's nearest point, where the vectors expect nothing;
// - the logarithms take their argument from KOBWBMinReal, not from the subnormals;
// - the real power is exp(y ln x) on the positive bases, so 0^y is approached from
//   KOBWBMinReal;
// - atanh restricts its argument to KOBWBAbsPrecision short of +-1;
// - a segment on an axis through the origin gives every angle of atan2.
// Every other difference fails the test.

namespace {

using namespace itl;
using Env = KOBWBEnvironment;
using Forward = std::function<RI(const Env&, const Case&)>;

struct Function {
    std::size_t arguments;
    Forward apply;
};

RI Unary(RI (*f)(const Env&, const RI&), const Env& e, const Case& c) {
    return f(e, c.intervals[0]);
}

const std::map<std::string, Function>& Functions() {
    static const std::map<std::string, Function> functions = {
        {"neg",
         {1,
          [](const Env& e, const Case& c) {
              return KOBWBSub(e, RI{0, 0}, c.intervals[0]);
          }}},
        {"add",
         {2,
          [](const Env& e, const Case& c) { return KOBWBSum(e, c.intervals[0], c.intervals[1]); }}},
        {"sub",
         {2,
          [](const Env& e, const Case& c) { return KOBWBSub(e, c.intervals[0], c.intervals[1]); }}},
        {"mul",
         {2,
          [](const Env& e, const Case& c) { return KOBWBMul(e, c.intervals[0], c.intervals[1]); }}},
        {"div",
         {2,
          [](const Env& e, const Case& c) { return KOBWBDiv(e, c.intervals[0], c.intervals[1]); }}},
        {"recip",
         {1,
          [](const Env& e, const Case& c) {
              return KOBWBDiv(e, RI{1, 1}, c.intervals[0]);
          }}},
        {"sqr", {1, [](const Env& e, const Case& c) { return KOBWBPow(e, c.intervals[0], 2); }}},
        {"pown",
         {1, [](const Env& e, const Case& c) { return KOBWBPow(e, c.intervals[0], c.exponent); }}},
        {"pow",
         {2,
          [](const Env& e, const Case& c) { return KOBWBPow(e, c.intervals[0], c.intervals[1]); }}},
        {"fma",
         {3,
          [](const Env& e, const Case& c) {
              return KOBWBSum(e, KOBWBMul(e, c.intervals[0], c.intervals[1]), c.intervals[2]);
          }}},
        {"min",
         {2,
          [](const Env& e, const Case& c) { return KOBWBMin(e, c.intervals[0], c.intervals[1]); }}},
        {"max",
         {2,
          [](const Env& e, const Case& c) { return KOBWBMax(e, c.intervals[0], c.intervals[1]); }}},
        {"atan2",
         {2, [](const Env& e,
                const Case& c) { return KOBWBAtan2(e, c.intervals[0], c.intervals[1]); }}},
        {"sqrt", {1, [](const Env& e, const Case& c) { return Unary(KOBWBSqrt, e, c); }}},
        {"exp", {1, [](const Env& e, const Case& c) { return Unary(KOBWBExp, e, c); }}},
        {"log", {1, [](const Env& e, const Case& c) { return Unary(KOBWBLn, e, c); }}},
        {"log10", {1, [](const Env& e, const Case& c) { return Unary(KOBWBLog, e, c); }}},
        {"sin", {1, [](const Env& e, const Case& c) { return Unary(KOBWBSin, e, c); }}},
        {"cos", {1, [](const Env& e, const Case& c) { return Unary(KOBWBCos, e, c); }}},
        {"tan", {1, [](const Env& e, const Case& c) { return Unary(KOBWBTan, e, c); }}},
        {"asin", {1, [](const Env& e, const Case& c) { return KOBWBAsin(e, c.intervals[0]); }}},
        {"acos", {1, [](const Env& e, const Case& c) { return KOBWBAcos(e, c.intervals[0]); }}},
        {"atan", {1, [](const Env& e, const Case& c) { return KOBWBAtan(e, c.intervals[0]); }}},
        {"sinh", {1, [](const Env& e, const Case& c) { return Unary(KOBWBSinh, e, c); }}},
        {"cosh", {1, [](const Env& e, const Case& c) { return Unary(KOBWBCosh, e, c); }}},
        {"tanh", {1, [](const Env& e, const Case& c) { return Unary(KOBWBTanh, e, c); }}},
        {"asinh", {1, [](const Env& e, const Case& c) { return Unary(KOBWBAsinh, e, c); }}},
        {"acosh", {1, [](const Env& e, const Case& c) { return Unary(KOBWBAcosh, e, c); }}},
        {"atanh", {1, [](const Env& e, const Case& c) { return Unary(KOBWBAtanh, e, c); }}},
        {"ceil", {1, [](const Env& e, const Case& c) { return Unary(KOBWBCeil, e, c); }}},
        {"floor", {1, [](const Env& e, const Case& c) { return Unary(KOBWBFloor, e, c); }}},
        {"trunc", {1, [](const Env& e, const Case& c) { return Unary(KOBWBTrunc, e, c); }}},
        {"roundTiesToAway",
         {1, [](const Env& e, const Case& c) { return Unary(KOBWBRound, e, c); }}},
        {"abs", {1, [](const Env& e, const Case& c) { return Unary(KOBWBAbs, e, c); }}},
    };
    return functions;
}

bool Holds(const RI& a, double v) {
    return !IsEmpty(a) && a.lower <= v && v <= a.upper;
}

const double pi = std::acos(-1.0);

// A segment on an axis with the origin strictly between its ends.
bool ThroughOrigin(const RI& y, const RI& x) {
    return (y.lower == 0 && y.upper == 0 && x.lower < 0 && x.upper > 0) ||
           (x.lower == 0 && x.upper == 0 && y.lower < 0 && y.upper > 0);
}

bool Infinite(double bound) {
    return std::fabs(bound) >= KOBWBMaxReal;
}

// Whether the bound of the result differs from the expected one by more than the
// tolerance.
bool Differs(double result, double expected) {
    return !(std::fabs(result - expected) <= Tolerance(expected, false));
}

// Where the result differs from the expected interval, the expected bound is infinite,
// or is 0 while an argument reaches infinity (x / infinity, x^-y at infinity).
bool OnlyAtInfinity(const Case& c, const RI& result, const RI& expected) {
    const bool infiniteArgument =
        std::any_of(c.intervals.begin(), c.intervals.end(), [](const RI& a) {
            return !IsEmpty(a) && (Infinite(a.lower) || Infinite(a.upper));
        });
    for (const auto& [got, wanted] :
         {std::pair{result.lower, expected.lower}, std::pair{result.upper, expected.upper}})
        if (Differs(got, wanted) && !Infinite(wanted) && !(wanted == 0 && infiniteArgument))
            return false;
    return true;
}

// The domain of the functions that restrict their argument.
bool DomainOf(const std::string& op, RI& domain) {
    const std::map<std::string, RI> domains = {{"sqrt", {0, KOBWBMaxReal}},
                                               {"log", {KOBWBMinReal, KOBWBMaxReal}},
                                               {"log10", {KOBWBMinReal, KOBWBMaxReal}},
                                               {"asin", {-1, 1}},
                                               {"acos", {-1, 1}},
                                               {"acosh", {1, KOBWBMaxReal}}};
    const auto found = domains.find(op);
    if (found == domains.end()) return false;
    domain = found->second;
    return true;
}

// The reason from the documented design for a result that is not the expected one, or
// an empty string when there is none.
std::string DesignReason(const Case& c, const RI& result, const RI& expected) {
    const std::string& op = c.operation;
    const Env e;
    RI domain;
    if ((op == "div" && Holds(c.intervals[1], 0)) || (op == "recip" && Holds(c.intervals[0], 0)))
        return "a divisor holding 0 gives the whole line";
    if (!IsEmpty(expected) && !IsEmpty(result) && OnlyAtInfinity(c, result, expected))
        return "infinity is the finite KOBWBMaxReal";
    if (IsEmpty(expected) && DomainOf(op, domain) &&
        c.intervals[0].upper >= domain.lower - e.GetTolerance() &&
        c.intervals[0].lower <= domain.upper + e.GetTolerance())
        return "an argument within the tolerance of the domain keeps its nearest point";
    if ((op == "log" || op == "log10") && c.intervals[0].lower < KOBWBMinReal)
        return "the logarithms take their argument from KOBWBMinReal";
    if (op == "pow" && Holds(c.intervals[0], 0))
        return "the real power is exp(y ln x), taken on the positive bases";
    const RI& x = c.intervals[0];
    if (op == "atanh" && std::max(std::fabs(x.lower), std::fabs(x.upper)) > 1 - KOBWBAbsPrecision)
        return "atanh restricts its argument to KOBWBAbsPrecision short of +-1";
    if (op == "atan2" && ThroughOrigin(c.intervals[0], c.intervals[1]) &&
        !Differs(result.lower, -pi) && !Differs(result.upper, pi))
        return "a segment through the origin gives every angle";
    return "";
}

TEST(KOBWBForwardVectorsTest, FunctionsMatchTheForwardVectors) {
    const std::string folder = VectorsFolder();
    if (!std::ifstream(folder + "/libieeep1788_elem.itl"))
        GTEST_SKIP() << "no vectors at " << folder;
    std::map<std::string, Counts> counts;
    std::map<std::string, int> byDesign;
    std::vector<std::string> failures;
    for (const std::string file : {"libieeep1788_elem.itl", "atan2.itl"}) {
        for (const Case& c : ReadCases(folder + "/" + file, file, counts)) {
            Counts& count = counts[c.operation];
            const auto found = Functions().find(c.operation);
            if (found == Functions().end() || found->second.arguments != c.intervals.size()) {
                ++count.skipped;
                continue;
            }
            ++count.run;
            const Env e;
            const RI result = found->second.apply(e, c);
            const RI& expected = c.expected[0];
            const Outcome outcome = Compare(result, expected, false);
            if (outcome == Outcome::Passed) {
                ++count.passed;
                continue;
            }
            const std::string text = c.file + ":" + std::to_string(c.line) + " " + c.operation +
                                     " gives " + Text(result) + ", expected " + Text(expected);
            const std::string reason = DesignReason(c, result, expected);
            if (reason.empty()) {
                failures.push_back(text);
                continue;
            }
            ++count.loose;
            ++byDesign[reason];
            std::cout << "by design (" << reason << "): " << text << "\n";
        }
    }
    Counts all;
    for (const auto& [operation, count] : counts) {
        std::cout << operation << ": run " << count.run << ", passed " << count.passed
                  << ", by design " << count.loose << ", skipped " << count.skipped << "\n";
        all.run += count.run;
        all.passed += count.passed;
        all.loose += count.loose;
        all.skipped += count.skipped;
    }
    for (const auto& [reason, number] : byDesign)
        std::cout << number << " by design: " << reason << "\n";
    std::cout << "all: run " << all.run << ", passed " << all.passed << ", by design " << all.loose
              << ", skipped " << all.skipped << "\n";
    for (const std::string& failure : failures)
        ADD_FAILURE() << failure;
    EXPECT_GT(all.run, 1500);
}

} // namespace
