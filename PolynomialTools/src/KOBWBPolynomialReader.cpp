#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBExpression.h"
#include "KOBWBLimits.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <cstdint>
#include <cstdio>

// Reading expressions as polynomials: every node once, children before parents,
// without recursion, so that long chains and shared sub-graphs are read in the
// time of their nodes.

using Impl = KOBWBPolynomialContext::Impl;

namespace {

// A real is exact when it is a binary fraction with a denominator of at most 2^20.
KOBWBCoefficient RealNumber(double x) {
    KOBWBRational exact;
    if (KOBWBRational::FromDouble(x, exact) && (exact * KOBWBRational(1LL << 20)).IsInteger()) return exact;
    return KOBWBCoefficient::Real(x);
}

bool IsSingleReal(double x) { return !KOBWBIsAnyReal(x) && !KOBWBIsNilReal(x); }

// The number a constant holds with its power of Pi; false for values that are not
// one number (intervals, enumerations, booleans, any and nil).
bool ReadNumber(const KOBWBValue& value, KOBWBCoefficient& number, long long& piPower) {
    piPower = 0;
    if (value.IsAFraction()) {
        const KOBWBFraction f = value.GetAsFraction();
        if (f.denominator == 0) return false;
        number = KOBWBRational(f.numerator, f.denominator);
        piPower = f.powerOfPi;
        return true;
    }
    switch (value.GetType()) {
    case KOBWBIntegerValue: {
        const int n = value.GetAsInteger();
        if (KOBWBIsAnyInteger(n) || KOBWBIsNilInteger(n)) return false;
        number = KOBWBCoefficient(n);
        return true;
    }
    case KOBWBRealValue: {
        const double x = value.GetAsReal();
        if (!IsSingleReal(x)) return false;
        number = RealNumber(x);
        return true;
    }
    case KOBWBIntegerIntervalValue: {
        const KOBWBIntegerInterval i = value.GetAsIntegerInterval();
        if (i.lower != i.upper || KOBWBIsAnyInteger(i.lower) || KOBWBIsNilInteger(i.lower)) return false;
        number = KOBWBCoefficient(i.lower);
        return true;
    }
    case KOBWBRealIntervalValue: {
        const KOBWBRealInterval r = value.GetAsRealInterval();
        if (r.lower != r.upper || !IsSingleReal(r.lower)) return false;
        number = RealNumber(r.lower);
        return true;
    }
    default: return false;
    }
}

bool ReadsChildren(KOBWBExpressionType type) { return type != KOBWBIntegrateType; }

} // namespace

namespace {

std::size_t NodeHash(const KOBWBExpression* node) { return reinterpret_cast<std::uintptr_t>(node) >> 4; }

} // namespace

int Impl::FindReading(const KOBWBExpression* node) const {
    const NodeReading* found =
        readTable.Find(NodeHash(node), [node](const NodeReading& entry) { return entry.node == node; });
    return found ? found->reading : -1;
}

int Impl::AddReading(const KOBWBExpression* node) {
    const int reading = static_cast<int>(readings.size());
    readTable.Insert(NodeHash(node), [node](const NodeReading& entry) { return entry.node == node; }, {node, reading});
    readings.emplace_back();
    return reading;
}

const KOBWBPolynomial* Impl::Known(KOBWBExpression* node) const {
    const int reading = FindReading(node);
    if (reading < 0 || !readings[static_cast<size_t>(reading)].done) return nullptr;
    const Reading& entry = readings[static_cast<size_t>(reading)];
    return entry.shared ? entry.shared : &entry.polynomial;
}

bool Impl::Read(KOBWBExpression* root, KOBWBPolynomial& result) {
    if (!root || &root->GetFactory() != &factory) return false;
    if (const KOBWBPolynomial* known = Known(root)) {
        result = *known;
        return true;
    }
    // Reading does not nest, so one stack serves every expression.
    frames.assign(1, {root, AddReading(root), 0});
    readingWork = 0;
    while (!frames.empty()) {
        Frame& frame = frames.back();
        KOBWBExpression* node = frame.node;
        if (ReadsChildren(node->GetType()) && frame.next < node->GetNbOfChildren()) {
            KOBWBExpression* child = node->GetChild(frame.next++);
            if (!child) continue;
            const int reading = FindReading(child);
            if (reading >= 0 && readings[static_cast<size_t>(reading)].done) continue;
            // A foreign node, or a cycle made by replacing children, is not an expression.
            if (&child->GetFactory() != &factory || reading >= 0) {
                ForgetReadings();
                return false;
            }
            frames.push_back({child, AddReading(child), 0});
            continue;
        }
        const int reading = frame.reading;
        frames.pop_back();
        const KOBWBPolynomial* shared = SharedLeaf(node);
        Reading& entry = readings[static_cast<size_t>(reading)];
        if (shared)
            entry.shared = shared;
        else
            entry.polynomial = ReadNode(node);
        entry.done = true;
    }
    result = *Known(root);
    return true;
}

const KOBWBPolynomial* Impl::SharedLeaf(KOBWBExpression* node) {
    if (node->GetType() == KOBWBVariableType) {
        const int atom = VariableAtom(static_cast<KOBWBVariable*>(node));
        if (atoms[static_cast<size_t>(atom)].kind != AtomKind::Variable) return nullptr;
        return variableTable.Find(static_cast<std::size_t>(static_cast<KOBWBVariable*>(node)->GetIdx()),
                                  [atom](const VariableEntry& entry) { return entry.atom == atom; })
            ->polynomial;
    }
    if (node->GetType() != KOBWBConstantType) return nullptr;
    const KOBWBValue& value = node->GetExprValue();
    if (value.IsAFraction() || value.GetType() != KOBWBIntegerValue) return nullptr;
    const int n = value.GetAsInteger();
    if (n < -smallInteger || n > smallInteger) return nullptr;
    std::unique_ptr<KOBWBPolynomial>& polynomial = integerPolynomials[n + smallInteger];
    if (!polynomial) polynomial.reset(new KOBWBPolynomial(KOBWBCoefficient(n)));
    return polynomial.get();
}

KOBWBPolynomial Impl::ReadNode(KOBWBExpression* node) {
    const KOBWBExpressionType type = node->GetType();
    if (type == KOBWBVariableType) return KOBWBPolynomial::Atom(VariableAtom(static_cast<KOBWBVariable*>(node)));
    if (type == KOBWBConstantType) {
        KOBWBCoefficient number;
        long long piPower = 0;
        if (!ReadNumber(node->GetExprValue(), number, piPower)) return KOBWBPolynomial::Atom(UniqueAtom(AtomKind::Value, node));
        KOBWBPolynomial constant(number);
        return piPower == 0 ? constant : KOBWBPolynomial::Multiply(constant, KOBWBPolynomial::Atom(piAtom, piPower));
    }
    const int count = node->GetNbOfChildren();
    if (!ReadsChildren(type) || count == 0) return KOBWBPolynomial::Atom(UniqueAtom(AtomKind::Opaque, node));
    // Reading does not nest, so one list of arguments serves every node.
    std::vector<const KOBWBPolynomial*>& arguments = argumentScratch;
    arguments.assign(static_cast<size_t>(count), nullptr);
    for (int i = 0; i < count; ++i) {
        arguments[static_cast<size_t>(i)] = Known(node->GetChild(i));
        if (!arguments[static_cast<size_t>(i)]) return KOBWBPolynomial::Atom(UniqueAtom(AtomKind::Opaque, node));
    }
    return ReadOperator(node, arguments);
}

KOBWBPolynomial Impl::ReadOperator(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments) {
    const size_t count = arguments.size();
    switch (node->GetType()) {
    case KOBWBSumType: return KOBWBPolynomial::Sum(arguments);
    case KOBWBProductType: return Product(node, arguments);
    case KOBWBQuotientType:
        if (count == 2) return Quotient(*arguments[0], *arguments[1], node);
        break;
    case KOBWBPowerType:
        if (count == 2) return Power(*arguments[0], *arguments[1], node);
        break;
    default: break;
    }
    return OperatorAtom(node, arguments);
}

KOBWBPolynomial Impl::OperatorAtom(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments) {
    return KOBWBPolynomial::Atom(InternAtom(AtomKind::Operator, node, arguments));
}

KOBWBPolynomial Impl::PastBudget(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments) {
    pastBudget = true;
    return OperatorAtom(node, arguments);
}

namespace {

bool OnlyPi(const KOBWBPolynomial& p) {
    if (p.GetNbOfTerms() != 1) return false;
    for (const KOBWBMonomialFactor& factor : p.GetTerm(0).monomial)
        if (factor.atom != KOBWBPolynomialContext::piAtom) return false;
    return true;
}

// The inverse of a single term made of Pi powers and a non-zero coefficient.
KOBWBPolynomial InverseTerm(const KOBWBPolynomialTerm& term) {
    KOBWBPolynomial inverse(KOBWBCoefficient(1) / term.coefficient);
    for (const KOBWBMonomialFactor& factor : term.monomial) {
        const long long opposite = -static_cast<long long>(factor.exponent);
        inverse = KOBWBPolynomial::Multiply(inverse, KOBWBPolynomial::Atom(factor.atom, opposite));
    }
    return inverse;
}

// The largest magnitude of a coefficient, as a double (infinite past the doubles).
double LargestCoefficient(const KOBWBPolynomial& p) {
    double largest = 0.0;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) largest = std::max(largest, std::fabs(term.coefficient.ToDouble()));
    return largest;
}

// An expanded product or power is kept when its exponents are within the range of
// monomials (short of the bounds, where a product that went past stops) and its
// coefficients within the reals: a coefficient past KOBWBMaxReal has no value to be written as.
bool Writable(const KOBWBPolynomial& p) {
    return p.GetMaxExponent() < KOBWBMonomialFactor::maxExponent && LargestCoefficient(p) <= KOBWBMaxReal;
}

// The smallest magnitude of a nonzero coefficient, 1 when there is none.
double SmallestCoefficient(const KOBWBPolynomial& p) {
    double smallest = 1.0;
    for (const KOBWBPolynomialTerm& term : p.GetTerms()) {
        const double magnitude = std::fabs(term.coefficient.ToDouble());
        if (magnitude > 0.0) smallest = std::min(smallest, magnitude);
    }
    return smallest;
}

// Whether base^exponent may stay within the reals: (terms x largest coefficient)^exponent
// bounds every coefficient of the power, so a power past that is not expanded at all.
// The same bound holds the other way, on the reciprocal of the smallest coefficient: an
// exact coefficient such as 2/3 raised that far has a numerator and denominator of
// millions of digits, and its power is past the reals' precision anyway.
bool PowerMayBeWritable(const KOBWBPolynomial& base, long long exponent) {
    const double largest = LargestCoefficient(base);
    const double terms = static_cast<double>(base.GetNbOfTerms());
    if (base.GetNbOfTerms() == 1 && largest == 1.0) return true;
    const double growth = std::max({1.0, terms * largest, 1.0 / SmallestCoefficient(base)});
    return static_cast<double>(exponent) * std::log(growth) <= std::log(KOBWBMaxReal);
}

} // namespace

bool Impl::ExpandedPower(const KOBWBPolynomial& base, long long exponent, KOBWBPolynomial& power) const {
    KOBWBPolynomial expanded;
    if (!PowerMayBeWritable(base, exponent) || !base.Power(exponent, maxTerms, expanded) || !Writable(expanded))
        return false;
    power = std::move(expanded);
    return true;
}

KOBWBPolynomial Impl::Quotient(const KOBWBPolynomial& numerator, const KOBWBPolynomial& denominator, KOBWBExpression* node) {
    if (denominator.IsZero()) return OperatorAtom(node, {&numerator, &denominator});
    if (OnlyPi(denominator)) return KOBWBPolynomial::Multiply(numerator, InverseTerm(denominator.GetTerm(0)));
    // Rule 7: a monic denominator, its first term in the canonical order of terms
    // given coefficient 1.
    const KOBWBPolynomialTerm* first = nullptr;
    OrderedMonomial firstOrder;
    for (const KOBWBPolynomialTerm& term : denominator.GetTerms()) {
        OrderedMonomial order = Ordered(term.monomial);
        if (!first || Precedes(order, firstOrder)) {
            first = &term;
            firstOrder = std::move(order);
        }
    }
    const KOBWBCoefficient scale = KOBWBCoefficient(1) / first->coefficient;
    KOBWBPolynomial monic(denominator), scaled(numerator);
    monic *= scale;
    scaled *= scale;
    const int reciprocal = InternAtom(AtomKind::Reciprocal, node, {&monic});
    return KOBWBPolynomial::Multiply(scaled, KOBWBPolynomial::Atom(reciprocal));
}

KOBWBPolynomial Impl::Power(const KOBWBPolynomial& base, const KOBWBPolynomial& exponent, KOBWBExpression* node) {
    KOBWBCoefficient n;
    const bool integer = exponent.IsConstant(n) && n.IsExact() && n.GetExact().IsInteger() && n.GetExact().IsSmall() &&
                         n.GetExact().ToDouble() >= INT_MIN && n.GetExact().ToDouble() <= INT_MAX;
    if (!integer) return OperatorAtom(node, {&base, &exponent});
    const long long e = static_cast<long long>(n.GetExact().ToDouble());
    KOBWBPolynomial power;
    KOBWBCoefficient constantBase;
    const bool zeroBase = base.IsConstant(constantBase) && constantBase.IsZero();
    // A power of a sum takes about as many products of two terms as the terms of the
    // power times those of its base.
    const bool sum = base.GetNbOfTerms() > 1;
    if (sum && readingWork > MaxReadingWork()) return PastBudget(node, {&base, &exponent});
    if (e >= 0) {
        if (!ExpandedPower(base, e, power)) return PastBudget(node, {&base, &exponent});
        if (sum) readingWork += static_cast<long long>(power.GetNbOfTerms()) * base.GetNbOfTerms();
        return power;
    }
    if (zeroBase) return OperatorAtom(node, {&base, &exponent});
    if (OnlyPi(base) || base.IsConstant(constantBase)) {
        const KOBWBPolynomial inverse = InverseTerm(base.GetTerm(0));
        if (ExpandedPower(inverse, -e, power)) return power;
        return PastBudget(node, {&base, &exponent});
    }
    if (!ExpandedPower(base, -e, power)) return PastBudget(node, {&base, &exponent});
    if (sum) readingWork += static_cast<long long>(power.GetNbOfTerms()) * base.GetNbOfTerms();
    return Quotient(KOBWBPolynomial(KOBWBCoefficient(1)), power, node);
}

KOBWBPolynomial Impl::Product(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& factors) {
    KOBWBPolynomial product(*factors[0]);
    const long long maxWork = 64LL * maxTerms;
    for (size_t i = 1; i < factors.size(); ++i) {
        const KOBWBPolynomial& factor = *factors[i];
        const long long work = static_cast<long long>(product.GetNbOfTerms()) * factor.GetNbOfTerms();
        if (work > maxWork || (work > 1 && readingWork > MaxReadingWork())) return PastBudget(node, factors);
        readingWork += work;
        if (!KOBWBPolynomial::MultiplyWithin(product, factor, static_cast<size_t>(maxTerms), product) || !Writable(product))
            return PastBudget(node, factors);
    }
    return product;
}
