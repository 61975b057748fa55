#include "KOBWBUnivariatePolynomialTools.h"

#include "KOBWBFlintUnivariate.h"
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
    // Past the largest double, the bound on the near side is the largest double.
    if (std::isinf(d)) {
        const bool towardZero = downward == (d > 0);
        return towardZero ? std::copysign(std::numeric_limits<double>::max(), d) : d;
    }
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

// Below this degree, Sturm sequences isolate faster than complex root enclosures.
constexpr int sturmDegree = 8;

// The exact isolating intervals of the roots of a non-zero row, in increasing order:
// by certified enclosures checked exactly, or by Sturm sequences in exact rational
// arithmetic for small degrees and when a check fails.
std::vector<KOBWBRationalInterval> Isolate(const Row& row) {
    std::vector<KOBWBRationalInterval> found;
    if (Degree(row) >= sturmDegree && KOBWBFlintUnivariate::IsolateRealRoots(row, found)) return found;
    const Row square = SquareFreePart(row);
    if (Degree(square) <= 0) return found;
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
            found.push_back({std::move(interval.lower), std::move(interval.upper)});
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
        found.push_back({middle, middle});
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
              [](const KOBWBRationalInterval& a, const KOBWBRationalInterval& b) { return a.lower < b.lower; });
    return found;
}

// Exact bisection of an isolating interval of a root of the integer row square, whose
// sign at the lower end is lowerSign, until it is at most width wide or steps
// bisections are made; whether it is that narrow.
bool Bisect(const Row& square, int lowerSign, KOBWBRationalInterval& root, const KOBWBRational& width,
            int steps = std::numeric_limits<int>::max()) {
    for (; width < root.upper - root.lower; --steps) {
        if (steps == 0) return false;
        KOBWBRational middle = (root.lower + root.upper) / KOBWBRational(2);
        const int sign = SignAt(square, middle);
        if (sign == 0) {
            root.upper = middle;
            root.lower = std::move(middle);
        } else if (sign == lowerSign) {
            root.lower = std::move(middle);
        } else {
            root.upper = std::move(middle);
        }
    }
    return true;
}

} // namespace

bool KOBWBUnivariatePolynomialTools::IsolateRealRoots(const KOBWBPolynomial& p, int atom,
                                                      std::vector<KOBWBRationalInterval>& roots) {
    Row row;
    if (!FromPolynomial(p, atom, row) || row.empty()) return false;
    roots = Isolate(row);
    return true;
}

bool KOBWBUnivariatePolynomialTools::IsolateRealRoots(const KOBWBPolynomial& p, int atom,
                                                      std::vector<KOBWBRealInterval>& roots) {
    std::vector<KOBWBRationalInterval> exact;
    if (!IsolateRealRoots(p, atom, exact)) return false;
    Row square;
    FromPolynomial(p, atom, square);
    square = WithIntegerCoefficients(SquareFreePart(square));
    KOBWBRational largest;
    KOBWBRational::FromDouble(std::numeric_limits<double>::max(), largest);
    std::vector<KOBWBRealInterval> found;
    for (KOBWBRationalInterval& root : exact) {
        // An interval that reaches past the largest double is cut there, on the side
        // of the root, so that a root within the doubles gets finite ends and one
        // beyond them [largest double, infinity].
        for (const KOBWBRational& cut : {-largest, largest}) {
            if (!(root.lower < cut && cut < root.upper)) continue;
            const int sign = SignAt(square, cut);
            if (sign == 0)
                root.lower = root.upper = cut;
            else if (sign == SignAt(square, root.lower))
                root.lower = cut;
            else
                root.upper = cut;
        }
        found.push_back({Outward(root.lower, true), Outward(root.upper, false)});
    }
    roots = std::move(found);
    return true;
}

bool KOBWBUnivariatePolynomialTools::RefineRoot(const KOBWBPolynomial& p, int atom, KOBWBRationalInterval& root,
                                                const KOBWBRational& width) {
    Row row;
    if (width.Sign() <= 0 || !FromPolynomial(p, atom, row) || row.empty() || root.upper < root.lower) return false;
    const Row square = WithIntegerCoefficients(SquareFreePart(row));
    const int lowerSign = SignAt(square, root.lower);
    if (root.lower == root.upper) return lowerSign == 0;
    if (lowerSign * SignAt(square, root.upper) >= 0) return false;
    Bisect(square, lowerSign, root, width);
    return true;
}

bool KOBWBUnivariatePolynomialTools::RationalRoots(const KOBWBPolynomial& p, int atom,
                                                   std::vector<KOBWBRational>& roots) {
    Row row;
    if (!FromPolynomial(p, atom, row) || row.empty()) return false;
    const Row square = WithIntegerCoefficients(SquareFreePart(row));
    std::vector<KOBWBRational> found;
    if (Degree(square) > 0) {
        // Two fractions whose denominators divide q are at least 1 / q^2 apart: below
        // that width an interval holds at most one of them, the simplest fraction in it.
        KOBWBRational q = Lead(square);
        if (q.Sign() < 0) q = -q;
        const KOBWBRational width = KOBWBRational(1) / (KOBWBRational(2) * q * q);
        for (KOBWBRationalInterval& root : Isolate(row)) {
            // The simplest fraction is tried on the way: a root of small denominator
            // is met long before the interval is that narrow.
            const int lowerSign = SignAt(square, root.lower);
            bool narrow = false;
            while (true) {
                KOBWBRational candidate = Simplest(root.lower, root.upper);
                if (SignAt(square, candidate) == 0) {
                    found.push_back(std::move(candidate));
                    break;
                }
                if (narrow) break;
                narrow = Bisect(square, lowerSign, root, width, 8);
            }
        }
    }
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
