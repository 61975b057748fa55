#ifndef AllSolutionsWorkloads_h
#define AllSolutionsWorkloads_h

#include "KOBWBx.h"

#include <algorithm>
#include <vector>

// Systems whose real solutions are all known, for the search of every solution.
namespace bench {

inline KOBWBVariable* BoundedVariable(KOBWBFactory& f, double lower, double upper) {
    KOBWBVariable* v = f.CreateVariable();
    v->SetExprValue(KOBWBValue(KOBWBRealInterval{lower, upper}));
    return v;
}

// The Broyden banded system in [-1, 1]^n, one solution:
// x_i (2 + 5 x_i^2) + 1 - sum over j in [i-5, i+1], j != i, of x_j (1 + x_j) = 0.
inline std::vector<KOBWBVariable*> BuildBroydenBanded(KOBWBFactory& f, int n) {
    std::vector<KOBWBVariable*> x;
    for (int i = 0; i < n; ++i) x.push_back(BoundedVariable(f, -1, 1));
    const auto real = [&f](double value) { return f.CreateRealConstant(value); };
    for (int i = 0; i < n; ++i) {
        std::vector<KOBWBExpression*> terms{
            f.CreateProduct(x[i], f.CreateSum(real(2), f.CreateProduct(real(5), f.CreatePower(x[i], 2)))), real(1)};
        for (int j = std::max(0, i - 5); j <= std::min(n - 1, i + 1); ++j)
            if (j != i) terms.push_back(f.CreateOpposite(f.CreateProduct(x[j], f.CreateSum(real(1), x[j]))));
        f.AddEquation(f.CreateSum(static_cast<int>(terms.size()), terms.data()), KOBWBEqEqual, real(0));
    }
    return x;
}

// (u-1)(u-2)(u-3)(u-4) = 0 and the same in v, with u = x + y and v = x - 2y, in
// [-10, 10]^2: 16 solutions, ((2a + b)/3, (a - b)/3) for a, b in 1..4.
inline void BuildMixedProducts(KOBWBFactory& f) {
    KOBWBVariable* x = BoundedVariable(f, -10, 10);
    KOBWBVariable* y = BoundedVariable(f, -10, 10);
    KOBWBExpression* u = f.CreateSum(x, y);
    KOBWBExpression* v = f.CreateSub(x, f.CreateProduct(f.CreateRealConstant(2), y));
    for (KOBWBExpression* w : {u, v}) {
        std::vector<KOBWBExpression*> factors;
        for (int k = 1; k <= 4; ++k) factors.push_back(f.CreateSub(w, f.CreateRealConstant(k)));
        f.AddEquation(f.CreateProduct(4, factors.data()), KOBWBEqEqual, f.CreateRealConstant(0));
    }
}

} // namespace bench

#endif
