// Algebra: a polynomial expression graph built from the bytes is simplified, and the
// simplified graph must agree with the original at a few points. Constants and points
// are integers, so both evaluations are exact while every value they pass through stays
// below 2^53: the largest value of a node of the original and the sum of the
// magnitudes of the simplified form's terms. Points beyond that, and points where the
// original has no value (an integer overflow gives the Nil interval), are not compared.

#include "FuzzGraph.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>

namespace {

const double exactBelow = 9007199254740992.0; // 2^53

// The midpoint of the value, NaN when it is empty.
double Midpoint(KOBWBExpression* expression) {
    const KOBWBRealInterval value = expression->GetValue().GetAsRealInterval();
    return value.lower <= value.upper ? (value.lower + value.upper) / 2 : std::nan("");
}

// The size of the values whose rounding the two evaluations may carry.
double Scale(std::vector<KOBWBExpression*>& original, KOBWBExpression* simplified) {
    double scale = 0;
    for (KOBWBExpression* node : original)
        scale = std::max(scale, std::fabs(Midpoint(node)));
    if (simplified->GetType() != KOBWBSumType) return scale + std::fabs(Midpoint(simplified));
    for (int i = 0; i < simplified->GetNbOfChildren(); ++i)
        scale += std::fabs(Midpoint(simplified->GetChild(i)));
    return scale;
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
        const double scale = Scale(graph.Pool(), simplified);
        if (!std::isfinite(before) || !(scale < exactBelow)) continue;
        if (before != after) {
            std::fprintf(stderr, "point %d: original %.17g, simplified %.17g\n", point, before,
                         after);
            std::abort();
        }
    }
    return 0;
}
