#include "KOBWBUnivariateArithmetic.h"

#include "KOBWBFlintUnivariate.h"
#include "KOBWBUnivariatePolynomialTools.h"

#include <algorithm>
#include <utility>

namespace KOBWBUnivariateArithmetic {

namespace {

const KOBWBRational zero;

}

bool FromPolynomial(const KOBWBPolynomial& polynomial, int atom, Row& row) {
    Row result;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        if (term.coefficient.IsReal() || term.monomial.size() > 1) return false;
        long long exponent = 0;
        if (term.monomial.size() == 1) {
            if (term.monomial[0].atom != atom || term.monomial[0].exponent < 0 ||
                term.monomial[0].exponent > KOBWBUnivariatePolynomialTools::maxDegree)
                return false;
            exponent = term.monomial[0].exponent;
        }
        if (exponent >= static_cast<long long>(result.size())) result.resize(static_cast<size_t>(exponent) + 1);
        result[static_cast<size_t>(exponent)] = term.coefficient.GetExact();
    }
    Trim(result);
    row = std::move(result);
    return true;
}

KOBWBPolynomial ToPolynomial(const Row& row, int atom) {
    std::vector<KOBWBPolynomialTerm> terms;
    for (size_t i = 0; i < row.size(); ++i) {
        if (row[i].IsZero()) continue;
        KOBWBPolynomialTerm term;
        if (i > 0) term.monomial.push_back({atom, static_cast<int>(i)});
        term.coefficient = KOBWBCoefficient(row[i]);
        terms.push_back(std::move(term));
    }
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

const KOBWBRational& Lead(const Row& row) { return row.empty() ? zero : row.back(); }

void Trim(Row& row) {
    while (!row.empty() && row.back().IsZero()) row.pop_back();
}

Row Constant(const KOBWBRational& value) { return value.IsZero() ? Row() : Row{value}; }

bool IsOne(const Row& row) { return row.size() == 1 && row[0].IsOne(); }

Row Add(const Row& a, const Row& b) {
    Row sum = a.size() >= b.size() ? a : b;
    const Row& other = a.size() >= b.size() ? b : a;
    for (size_t i = 0; i < other.size(); ++i) sum[i] += other[i];
    Trim(sum);
    return sum;
}

Row Subtract(const Row& a, const Row& b) {
    Row difference = a;
    if (difference.size() < b.size()) difference.resize(b.size());
    for (size_t i = 0; i < b.size(); ++i) difference[i] -= b[i];
    Trim(difference);
    return difference;
}

Row Multiply(const Row& a, const Row& b) {
    if (a.empty() || b.empty()) return Row();
    if (KOBWBFlintUnivariate::WorthConverting(std::min(Degree(a), Degree(b))))
        return KOBWBFlintUnivariate::Multiply(a, b);
    Row product(a.size() + b.size() - 1);
    for (size_t i = 0; i < a.size(); ++i) {
        if (a[i].IsZero()) continue;
        for (size_t j = 0; j < b.size(); ++j)
            if (!b[j].IsZero()) product[i + j] += a[i] * b[j];
    }
    Trim(product);
    return product;
}

Row Scale(const Row& a, const KOBWBRational& factor) {
    if (factor.IsZero()) return Row();
    Row scaled = a;
    for (KOBWBRational& c : scaled) c *= factor;
    return scaled;
}

Row Power(const Row& a, int exponent) {
    Row result = Constant(1);
    for (int i = 0; i < exponent; ++i) result = Multiply(result, a);
    return result;
}

Row Derivative(const Row& a) {
    Row derivative;
    for (size_t i = 1; i < a.size(); ++i) derivative.push_back(a[i] * KOBWBRational(static_cast<long long>(i)));
    Trim(derivative);
    return derivative;
}

KOBWBRational Evaluate(const Row& a, const KOBWBRational& x) {
    KOBWBRational value;
    for (size_t i = a.size(); i-- > 0;) {
        value *= x;
        value += a[i];
    }
    return value;
}

bool Divide(const Row& a, const Row& b, Row& quotient, Row& remainder) {
    if (b.empty()) return false;
    const int db = Degree(b);
    if (KOBWBFlintUnivariate::WorthConverting(db)) {
        KOBWBFlintUnivariate::Divide(a, b, quotient, remainder);
        return true;
    }
    Row r = a;
    Row q(static_cast<size_t>(std::max(Degree(a) - db + 1, 0)));
    const KOBWBRational& lead = b.back();
    for (int k = Degree(a) - db; k >= 0; --k) {
        KOBWBRational& top = r[static_cast<size_t>(db + k)];
        if (top.IsZero()) continue;
        const KOBWBRational c = top / lead;
        for (int j = 0; j <= db; ++j)
            if (!b[static_cast<size_t>(j)].IsZero()) r[static_cast<size_t>(j + k)] -= c * b[static_cast<size_t>(j)];
        q[static_cast<size_t>(k)] = c;
    }
    Trim(q);
    Trim(r);
    quotient = std::move(q);
    remainder = std::move(r);
    return true;
}

Row ExactQuotient(const Row& a, const Row& b) {
    Row q, r;
    Divide(a, b, q, r);
    return q;
}

Row Remainder(const Row& a, const Row& b) {
    Row q, r;
    if (!Divide(a, b, q, r)) return a;
    return r;
}

bool PseudoDivide(const Row& a, const Row& b, Row& quotient, Row& remainder) {
    if (b.empty()) return false;
    const int db = Degree(b);
    const KOBWBRational& lead = b.back();
    Row r = a;
    Row q(static_cast<size_t>(std::max(Degree(a) - db + 1, 0)));
    for (int k = Degree(a) - db; k >= 0; --k) {
        const KOBWBRational c = r[static_cast<size_t>(db + k)];
        for (KOBWBRational& x : q) x *= lead;
        for (KOBWBRational& x : r) x *= lead;
        if (!c.IsZero()) {
            q[static_cast<size_t>(k)] += c;
            for (int j = 0; j <= db; ++j)
                if (!b[static_cast<size_t>(j)].IsZero()) r[static_cast<size_t>(j + k)] -= c * b[static_cast<size_t>(j)];
        }
    }
    Trim(q);
    Trim(r);
    quotient = std::move(q);
    remainder = std::move(r);
    return true;
}

Row Monic(const Row& a) {
    if (a.empty() || a.back().IsOne()) return a;
    Row monic = a;
    const KOBWBRational inverse = KOBWBRational(1) / a.back();
    for (KOBWBRational& c : monic) c *= inverse;
    monic.back() = KOBWBRational(1);
    return monic;
}

std::vector<Row> SubresultantSequence(const Row& a, const Row& b) {
    std::vector<Row> sequence;
    Row first = a, second = b;
    if (Degree(first) < Degree(second)) std::swap(first, second);
    if (first.empty()) return sequence;
    sequence.push_back(first);
    if (second.empty()) return sequence;
    sequence.push_back(second);
    // Brown's reduction: each pseudo-remainder is divided by g h^delta, a factor it is
    // known to carry, so integer inputs keep integer members of moderate size.
    KOBWBRational g(1), h(1);
    while (Degree(second) > 0) {
        const int delta = Degree(first) - Degree(second);
        Row q, r;
        PseudoDivide(first, second, q, r);
        if (r.empty()) break;
        const KOBWBRational divisor = g * h.Power(delta);
        for (KOBWBRational& c : r) c /= divisor;
        first = std::move(second);
        second = std::move(r);
        sequence.push_back(second);
        g = Lead(first);
        h = h.Power(1 - delta) * g.Power(delta);
    }
    return sequence;
}

Row Gcd(const Row& a, const Row& b) {
    if (a.empty() && b.empty()) return Row();
    if (a.empty()) return Monic(b);
    if (b.empty()) return Monic(a);
    if (KOBWBFlintUnivariate::WorthConverting(std::min(Degree(a), Degree(b)))) return KOBWBFlintUnivariate::Gcd(a, b);
    const std::vector<Row> sequence = SubresultantSequence(a, b);
    return Monic(sequence.back());
}

bool SolveBezout(const Row& a, const Row& b, const Row& c, Row& s, Row& t) {
    if (a.empty() && b.empty()) return false;
    // The extended Euclidean algorithm over the rationals, keeping s0 a + (...) b = r0;
    // the cofactor of b is found at the end from c.
    Row r0 = a, r1 = b, s0 = Constant(1), s1;
    while (!r1.empty()) {
        Row q, r;
        Divide(r0, r1, q, r);
        Row s2 = Subtract(s0, Multiply(q, s1));
        r0 = std::move(r1);
        r1 = std::move(r);
        s0 = std::move(s1);
        s1 = std::move(s2);
    }
    // r0 is a gcd; c must be a multiple of it.
    Row factor, rest;
    Divide(c, r0, factor, rest);
    if (!rest.empty()) return false;
    Row sa = Multiply(s0, factor);
    if (b.empty()) {
        s = std::move(sa);
        t = Row();
        return true;
    }
    sa = Remainder(sa, b);
    t = ExactQuotient(Subtract(c, Multiply(sa, a)), b);
    s = std::move(sa);
    return true;
}

KOBWBRational Resultant(const Row& a, const Row& b) {
    if (a.empty() || b.empty()) return KOBWBRational();
    if (Degree(a) == 0) return a[0].Power(Degree(b));
    if (Degree(b) == 0) return b[0].Power(Degree(a));
    if (KOBWBFlintUnivariate::WorthConverting(std::min(Degree(a), Degree(b))))
        return KOBWBFlintUnivariate::Resultant(a, b);
    Row first = a, second = b;
    KOBWBRational sign(1);
    if (Degree(first) < Degree(second)) {
        std::swap(first, second);
        if (Degree(first) % 2 == 1 && Degree(second) % 2 == 1) sign = -sign;
    }
    KOBWBRational g(1), h(1);
    while (true) {
        const int delta = Degree(first) - Degree(second);
        if (Degree(first) % 2 == 1 && Degree(second) % 2 == 1) sign = -sign;
        Row q, r;
        PseudoDivide(first, second, q, r);
        if (r.empty()) return KOBWBRational();
        const KOBWBRational divisor = g * h.Power(delta);
        for (KOBWBRational& c : r) c /= divisor;
        first = std::move(second);
        second = std::move(r);
        g = Lead(first);
        h = h.Power(1 - delta) * g.Power(delta);
        if (Degree(second) == 0) break;
    }
    h = h.Power(1 - Degree(first)) * second[0].Power(Degree(first));
    return sign * h;
}

std::vector<Row> SquareFree(const Row& p, KOBWBRational& content) {
    content = Lead(p);
    std::vector<Row> factors;
    if (Degree(p) <= 0) return factors;
    // Yun's algorithm on the monic polynomial.
    const Row monic = Monic(p);
    const Row derivative = Derivative(monic);
    const Row common = Gcd(monic, derivative);
    Row b = ExactQuotient(monic, common);
    Row c = ExactQuotient(derivative, common);
    Row d = Subtract(c, Derivative(b));
    while (Degree(b) > 0) {
        Row factor = Gcd(b, d);
        b = ExactQuotient(b, factor);
        c = ExactQuotient(d, factor);
        d = Subtract(c, Derivative(b));
        factors.push_back(std::move(factor));
    }
    return factors;
}

Row SquareFreePart(const Row& p) {
    if (Degree(p) <= 0) return Monic(p);
    return Monic(ExactQuotient(p, Gcd(p, Derivative(p))));
}

}
