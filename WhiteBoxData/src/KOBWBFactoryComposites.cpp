#include "KOBWBFactory.h"

#include "KOBWBConstant.h"
#include "KOBWBIntegrateOperator.h"
#include "KOBWBVariable.h"

#include <cmath>
#include <vector>

// Composite constructors: nodes or small graphs made of the ordinary operators for
// the shapes callers keep building by hand (steps, polynomials, interpolations).
// The determinant, which needs the polynomial algebra, is made in PolynomialTools.

namespace {

bool IncreasingPoints(int n, const double* xs, const double* ys) {
    if (n < 2 || !xs || !ys) return false;
    for (int i = 0; i < n; ++i)
        if (!std::isfinite(xs[i]) || !std::isfinite(ys[i]) || (i > 0 && !(xs[i - 1] < xs[i]))) return false;
    return true;
}

} // namespace

KOBWBExpression* KOBWBFactory::CreateIntegrateOperator(KOBWBExpression* integrand, KOBWBVariable* variable) {
    if (!integrand || !variable || &integrand->GetFactory() != this || &variable->GetFactory() != this)
        return nullptr;
    return AddExpression(new (*this) KOBWBIntegrateOperator(*this, integrand, variable));
}

KOBWBExpression* KOBWBFactory::CreateStep(KOBWBExpression* x, double x0, double h0, double x1, double h1) {
    if (!x || &x->GetFactory() != this) return nullptr;
    KOBWBExpression* step = CreateUnaryOperator(KOBWBStepType, x);
    const double parameters[] = {x0, h0, x1, h1};
    for (int i = 0; step && i < 4; ++i) step->SetParameter(i, parameters[i]);
    return step;
}

KOBWBExpression* KOBWBFactory::CreatePolynomial(KOBWBExpression* x, int n, KOBWBExpression** coefficients) {
    if (!x || &x->GetFactory() != this || n < 1 || !coefficients) return nullptr;
    for (int i = 0; i < n; ++i)
        if (!coefficients[i] || &coefficients[i]->GetFactory() != this) return nullptr;
    std::vector<KOBWBExpression*> terms;
    for (int i = 0; i < n; ++i) {
        if (i == 0) {
            terms.push_back(coefficients[0]);
            continue;
        }
        KOBWBExpression* power = i == 1 ? x : CreatePower(x, i);
        terms.push_back(CreateProduct(coefficients[i], power));
    }
    return terms.size() == 1 ? terms[0] : CreateSum(static_cast<int>(terms.size()), terms.data());
}

KOBWBExpression* KOBWBFactory::CreatePolynomial(KOBWBExpression* x, int n, const double* coefficients) {
    if (!x || &x->GetFactory() != this || n < 1 || !coefficients) return nullptr;
    std::vector<KOBWBExpression*> terms;
    for (int i = 0; i < n; ++i) {
        if (coefficients[i] == 0.0) continue;
        KOBWBExpression* c = CreateRealConstant(coefficients[i]);
        if (i == 0) {
            terms.push_back(c);
            continue;
        }
        KOBWBExpression* power = i == 1 ? x : CreatePower(x, i);
        terms.push_back(coefficients[i] == 1.0 ? power : CreateProduct(c, power));
    }
    if (terms.empty()) return CreateIntegerConstant(0);
    return terms.size() == 1 ? terms[0] : CreateSum(static_cast<int>(terms.size()), terms.data());
}

KOBWBExpression* KOBWBFactory::CreatePiecewiseLinear(KOBWBExpression* x, int n, const double* xs,
                                                     const double* ys) {
    if (!x || &x->GetFactory() != this || !IncreasingPoints(n, xs, ys)) return nullptr;
    std::vector<double> slopes;
    for (int i = 0; i + 1 < n; ++i) slopes.push_back((ys[i + 1] - ys[i]) / (xs[i + 1] - xs[i]));
    // The first piece, then at each inner point the change of slope times the
    // distance past it.
    const double first[] = {ys[0], slopes[0]};
    std::vector<KOBWBExpression*> terms{CreatePolynomial(CreateSub(x, CreateRealConstant(xs[0])), 2, first)};
    KOBWBExpression* zero = CreateIntegerConstant(0);
    for (int i = 1; i + 1 < n; ++i) {
        const double change = slopes[static_cast<size_t>(i)] - slopes[static_cast<size_t>(i) - 1];
        if (change == 0.0) continue;
        KOBWBExpression* past = CreateMax(CreateSub(x, CreateRealConstant(xs[i])), zero);
        terms.push_back(CreateProduct(CreateRealConstant(change), past));
    }
    return terms.size() == 1 ? terms[0] : CreateSum(static_cast<int>(terms.size()), terms.data());
}

KOBWBExpression* KOBWBFactory::CreateCubicSpline(KOBWBExpression* x, int n, const double* xs, const double* ys) {
    if (!x || &x->GetFactory() != this || !IncreasingPoints(n, xs, ys)) return nullptr;
    const size_t count = static_cast<size_t>(n);
    std::vector<double> h(count - 1), slope(count - 1);
    for (size_t i = 0; i + 1 < count; ++i) {
        h[i] = xs[i + 1] - xs[i];
        slope[i] = (ys[i + 1] - ys[i]) / h[i];
    }
    // The second derivatives m at the points: m[0] = m[n-1] = 0 and, inside,
    // h[i-1] m[i-1] + 2 (h[i-1] + h[i]) m[i] + h[i] m[i+1] = 6 (slope[i] - slope[i-1]),
    // a tridiagonal system solved by elimination then back substitution.
    std::vector<double> m(count, 0.0), diagonal(count, 1.0), right(count, 0.0);
    for (size_t i = 1; i + 1 < count; ++i) {
        diagonal[i] = 2 * (h[i - 1] + h[i]);
        right[i] = 6 * (slope[i] - slope[i - 1]);
        if (i > 1) {
            const double factor = h[i - 1] / diagonal[i - 1];
            diagonal[i] -= factor * h[i - 1];
            right[i] -= factor * right[i - 1];
        }
    }
    for (size_t i = count - 1; i-- > 1;) m[i] = (right[i] - h[i] * m[i + 1]) / diagonal[i];
    // Piece i is ys[i] + b t + c t^2 + d[i] t^3 with t = x - xs[i]. The spline has two
    // continuous derivatives, so neighbouring pieces differ by (d[i] - d[i-1]) t^3 only.
    std::vector<double> d(count - 1);
    for (size_t i = 0; i + 1 < count; ++i) d[i] = (m[i + 1] - m[i]) / (6 * h[i]);
    const double first[] = {ys[0], slope[0] - h[0] * (2 * m[0] + m[1]) / 6, m[0] / 2, d[0]};
    std::vector<KOBWBExpression*> terms{CreatePolynomial(CreateSub(x, CreateRealConstant(xs[0])), 4, first)};
    KOBWBExpression* zero = CreateIntegerConstant(0);
    for (size_t i = 1; i + 1 < count; ++i) {
        const double change = d[i] - d[i - 1];
        if (change == 0.0) continue;
        KOBWBExpression* past = CreateMax(CreateSub(x, CreateRealConstant(xs[i])), zero);
        terms.push_back(CreateProduct(CreateRealConstant(change), CreatePower(past, 3)));
    }
    return terms.size() == 1 ? terms[0] : CreateSum(static_cast<int>(terms.size()), terms.data());
}
