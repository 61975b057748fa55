// Algebra: a polynomial expression graph built from the bytes is simplified, and the
// simplified graph must agree with the original at a few points. Constants and points
// are integers, so both evaluations are exact while every value they pass through stays
// below 2^53: the value of every node, and for sums the sum of their terms' magnitudes. Points
// beyond that, and points where the original has no value (an integer overflow gives the Nil
// interval), are not compared.

#include "FuzzGraph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>

namespace {

const double exactBelow = 9007199254740992.0; // 2^53

// The midpoint of the value, NaN when it is empty.
double Midpoint(KOBWBExpression* expression) {
    const KOBWBRealInterval value = expression->GetValue().GetAsRealInterval();
    return value.lower <= value.upper ? (value.lower + value.upper) / 2 : std::nan("");
}

// The largest value an evaluation of the graph passes through: the value of each node,
// and for a sum the sum of its children's magnitudes, which bounds its partial sums.
double Scale(KOBWBExpression* node, std::set<KOBWBExpression*>& seen) {
    if (!node || !seen.insert(node).second) return 0;
    // An empty value is a real past the library's range (an expanded term can pass it
    // where the factored form does not): no exact comparison there.
    const auto magnitude = [](KOBWBExpression* n) {
        const double m = Midpoint(n);
        return std::isnan(m) ? HUGE_VAL : std::fabs(m);
    };
    double scale = magnitude(node);
    double terms = 0;
    for (int i = 0; i < node->GetNbOfChildren(); ++i) {
        scale = std::max(scale, Scale(node->GetChild(i), seen));
        terms += magnitude(node->GetChild(i));
    }
    return node->GetType() == KOBWBSumType ? std::max(scale, terms) : scale;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    FuzzInput input(data, size);
    KOBWBFactory factory;
    FuzzGraph graph(factory, input);
    KOBWBExpression* original = nullptr;
    for (int i = 0; i < 24 && !input.Empty(); ++i)
        if (KOBWBExpression* made = graph.Create(true, false)) original = made;
    if (!original) return 0;
    KOBWBExpression* simplified = KOBWBPolynomialTools::Simplify(original);
    if (!simplified) std::abort();
    for (int point = 0; point < 3; ++point) {
        for (int i = 0; i < factory.GetNbOfVariables(); ++i)
            factory.GetVariable(i)->SetExprValue(
                KOBWBValue(static_cast<double>((point * 7 + i * 3) % 5 - 2)));
        const double before = Midpoint(original);
        const double after = Midpoint(simplified);
        std::set<KOBWBExpression*> seen;
        const double scale = std::max(Scale(original, seen), Scale(simplified, seen));
        if (!std::isfinite(before) || !(scale < exactBelow)) continue;
        if (before != after) {
            std::fprintf(stderr, "point %d: original %.17g, simplified %.17g\n", point, before,
                         after);
            std::abort();
        }
    }
    return 0;
}
