#include "KOBWBUnivariatePolynomialTools.h"

#include "KOBWBUnivariateArithmetic.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

using namespace KOBWBUnivariateArithmetic;

namespace {

// The row times the least common multiple of its denominators: integer
// coefficients, the same signs everywhere.
Row WithIntegerCoefficients(const Row& p) {
    KOBWBRational multiple(1);
    for (const KOBWBRational& c : p) {
        const KOBWBRational denominator = c.Denominator();
        // lcm(m, d) = m d / gcd(m, d), and d / m reduced has the numerator d / gcd(m, d).
        multiple *= (denominator / multiple).Numerator();
    }
    return Scale(p, multiple);
}

// The sign of p at numerator / denominator (denominator > 0) for integer p, from
// p(n / q) q^d = sum of ai n^i q^(d-i), in integers only.
int SignAt(const Row& p, const KOBWBRational& numerator, const std::vector<KOBWBRational>& denominatorPowers) {
    KOBWBRational value;
    const size_t degree = p.size() - 1;
    for (size_t i = p.size(); i-- > 0;) {
        value *= numerator;
        if (!p[i].IsZero()) value += p[i] * denominatorPowers[degree - i];
    }
    return value.Sign();
}

std::vector<KOBWBRational> DenominatorPowers(const KOBWBRational& x, size_t count) {
    const KOBWBRational denominator = x.Denominator();
    std::vector<KOBWBRational> powers{KOBWBRational(1)};
    while (powers.size() < count) powers.push_back(powers.back() * denominator);
    return powers;
}

int SignAt(const Row& p, const KOBWBRational& x) {
    return p.empty() ? 0 : SignAt(p, x.Numerator(), DenominatorPowers(x, p.size()));
}

// The Sturm sequence of a square-free p: p, p', then the negated remainders, each
// scaled by a positive factor to integer coefficients, so that signs are found in
// integer arithmetic.
class SturmSequence {
public:
    explicit SturmSequence(const Row& p) {
        m_members.push_back(WithIntegerCoefficients(p));
        Row derivative = Derivative(p);
        if (derivative.empty()) return;
        m_members.push_back(WithIntegerCoefficients(derivative));
        while (true) {
            const Row& previous = m_members[m_members.size() - 2];
            const Row& last = m_members.back();
            Row remainder = Remainder(previous, last);
            if (remainder.empty()) break;
            m_members.push_back(WithIntegerCoefficients(Scale(remainder, KOBWBRational(-1))));
        }
    }

    // The sign of p at x.
    int Sign(const KOBWBRational& x) const { return SignAt(m_members[0], x); }

    // The number of sign changes at x, zeros skipped.
    int SignChanges(const KOBWBRational& x) const {
        const KOBWBRational numerator = x.Numerator();
        const std::vector<KOBWBRational> powers = DenominatorPowers(x, m_members[0].size());
        int changes = 0, previous = 0;
        for (const Row& member : m_members) {
            const int sign = SignAt(member, numerator, powers);
            if (sign == 0) continue;
            if (previous != 0 && sign != previous) ++changes;
            previous = sign;
        }
        return changes;
    }

private:
    std::vector<Row> m_members;
};

// A power of two above every root's magnitude (Cauchy's bound 1 + max |ai / an|).
KOBWBRational RootBound(const Row& p) {
    KOBWBRational largest;
    for (size_t i = 0; i + 1 < p.size(); ++i) {
        KOBWBRational ratio = p[i] / p.back();
        if (ratio.Sign() < 0) ratio = -ratio;
        if (largest < ratio) largest = ratio;
    }
    KOBWBRational bound(1);
    const KOBWBRational limit = largest + KOBWBRational(1);
    while (!(limit < bound)) bound *= KOBWBRational(2);
    return bound;
}

struct Pending {
    KOBWBRational lower, upper;
    int lowerChanges, upperChanges;
};

// The nearest double at or below (downward) or at or above the rational.
double Outward(const KOBWBRational& value, bool downward) {
    double d = value.ToDouble();
    KOBWBRational exact;
    KOBWBRational::FromDouble(d, exact);
    const int order = KOBWBRational::Compare(exact, value);
    if (downward && order > 0) d = std::nextafter(d, -std::numeric_limits<double>::infinity());
    if (!downward && order < 0) d = std::nextafter(d, std::numeric_limits<double>::infinity());
    return d;
}

// The fraction of smallest denominator in [lower, upper], by continued fractions.
KOBWBRational Simplest(const KOBWBRational& lower, const KOBWBRational& upper) {
    const KOBWBRational floor = lower.Floor();
    if (floor == lower || !(upper < floor + KOBWBRational(1))) return floor == lower ? floor : floor + KOBWBRational(1);
    return floor + KOBWBRational(1) / Simplest(KOBWBRational(1) / (upper - floor), KOBWBRational(1) / (lower - floor));
}

}

bool KOBWBUnivariatePolynomialTools::RationalRoots(const KOBWBPolynomial& p, int atom,
                                                   std::vector<KOBWBRational>& roots) {
    std::vector<KOBWBRealInterval> intervals;
    if (!IsolateRealRoots(p, atom, intervals)) return false;
    Row row;
    FromPolynomial(p, atom, row);
    std::vector<KOBWBRational> found;
    for (KOBWBRealInterval& interval : intervals) {
        RefineRoot(p, atom, interval, 0.0);
        KOBWBRational lower, upper;
        KOBWBRational::FromDouble(interval.lower, lower);
        KOBWBRational::FromDouble(interval.upper, upper);
        KOBWBRational candidate = Simplest(lower, upper);
        if (Evaluate(row, candidate).IsZero()) found.push_back(std::move(candidate));
    }
    roots = std::move(found);
    return true;
}

bool KOBWBUnivariatePolynomialTools::IsolateRealRoots(const KOBWBPolynomial& p, int atom,
                                                      std::vector<KOBWBRealInterval>& roots) {
    Row row;
    if (!FromPolynomial(p, atom, row) || row.empty()) return false;
    std::vector<KOBWBRealInterval> found;
    const Row square = SquareFreePart(row);
    if (Degree(square) <= 0) {
        roots.clear();
        return true;
    }
    const SturmSequence sturm(square);
    const KOBWBRational bound = RootBound(square);
    std::vector<Pending> pending{{-bound, bound, sturm.SignChanges(-bound), sturm.SignChanges(bound)}};
    // Every pending interval (lower, upper] has ends that are not roots and holds
    // lowerChanges - upperChanges roots.
    while (!pending.empty()) {
        Pending interval = std::move(pending.back());
        pending.pop_back();
        const int count = interval.lowerChanges - interval.upperChanges;
        if (count == 0) continue;
        if (count == 1) {
            found.push_back({Outward(interval.lower, true), Outward(interval.upper, false)});
            continue;
        }
        const KOBWBRational middle = (interval.lower + interval.upper) / KOBWBRational(2);
        if (sturm.Sign(middle) != 0) {
            const int changes = sturm.SignChanges(middle);
            pending.push_back({middle, interval.upper, changes, interval.upperChanges});
            pending.push_back({interval.lower, middle, interval.lowerChanges, changes});
            continue;
        }
        // The middle is a root: keep it alone and split around a gap that holds no
        // other root.
        const double exact = middle.ToDouble();
        found.push_back({exact, exact});
        KOBWBRational gap = (interval.upper - interval.lower) / KOBWBRational(4);
        while (true) {
            const KOBWBRational left = middle - gap, right = middle + gap;
            if (sturm.Sign(left) != 0 && sturm.Sign(right) != 0) {
                const int leftChanges = sturm.SignChanges(left), rightChanges = sturm.SignChanges(right);
                if (leftChanges - rightChanges == 1) {
                    pending.push_back({right, interval.upper, rightChanges, interval.upperChanges});
                    pending.push_back({interval.lower, left, interval.lowerChanges, leftChanges});
                    break;
                }
            }
            gap /= KOBWBRational(2);
        }
    }
    std::sort(found.begin(), found.end(),
              [](const KOBWBRealInterval& a, const KOBWBRealInterval& b) { return a.lower < b.lower; });
    roots = std::move(found);
    return true;
}

bool KOBWBUnivariatePolynomialTools::RefineRoot(const KOBWBPolynomial& p, int atom, KOBWBRealInterval& root,
                                                double width) {
    Row row;
    if (!FromPolynomial(p, atom, row) || row.empty()) return false;
    KOBWBRational lower, upper;
    if (!KOBWBRational::FromDouble(root.lower, lower) || !KOBWBRational::FromDouble(root.upper, upper) ||
        upper < lower)
        return false;
    const Row square = WithIntegerCoefficients(SquareFreePart(row));
    if (lower == upper) return SignAt(square, lower) == 0;
    const int lowerSign = SignAt(square, lower);
    const int upperSign = SignAt(square, upper);
    if (lowerSign * upperSign >= 0) return false;
    double low = root.lower, high = root.upper;
    while (!(high - low <= width)) {
        const double middle = low + (high - low) / 2;
        if (middle <= low || middle >= high) break;
        KOBWBRational exact;
        KOBWBRational::FromDouble(middle, exact);
        const int sign = SignAt(square, exact);
        if (sign == 0) {
            low = high = middle;
        } else if (sign == lowerSign) {
            low = middle;
        } else {
            high = middle;
        }
    }
    root = {low, high};
    return true;
}
