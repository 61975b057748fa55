#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBExpression.h"
#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBLargeIntegerWriter.h"
#include "KOBWBLimits.h"

#include <algorithm>
#include <cstring>
#include <map>

// Writing polynomials as expressions in the canonical form listed in
// KOBWBPolynomialContext.h.

using Impl = KOBWBPolynomialContext::Impl;

namespace {

long long PiPower(const KOBWBMonomial& monomial) {
    for (const KOBWBMonomialFactor& factor : monomial)
        if (factor.atom == KOBWBPolynomialContext::piAtom) return factor.exponent;
    return 0;
}

} // namespace

// Rule 9: one node per constant value.
KOBWBExpression* Impl::Constant(const KOBWBValue& value, const std::string& key) {
    const auto found = constants.find(key);
    if (found != constants.end()) return found->second;
    KOBWBExpression* constant = factory.CreateConstant(value);
    constants.emplace(key, constant);
    return constant;
}

namespace {

// Whether a part of an integer or fraction constant stands for itself: the integers
// that stand for any or no integer, and those past them, do not.
bool IsNumberPart(long long part) { return part > KOBWBSingleInteger_Nil && part < KOBWBSingleInteger_Any; }

// The numerator and denominator of the one integer or fraction constant that writes
// the coefficient times Pi to the power; false when there is none.
bool ExactConstantParts(const KOBWBCoefficient& coefficient, long long piPower, int& numerator, int& denominator) {
    return coefficient.IsExact() && coefficient.GetExact().FitsInt(numerator, denominator) &&
           IsNumberPart(numerator) && IsNumberPart(denominator) && IsNumberPart(piPower);
}

} // namespace

KOBWBExpression* Impl::WriteCoefficient(const KOBWBCoefficient& coefficient, long long piPower) {
    int numerator = 0, denominator = 1;
    if (ExactConstantParts(coefficient, piPower, numerator, denominator)) {
        if (piPower == 0 && denominator == 1) {
            if (numerator == 0) return zero;
            if (numerator == 1) return one;
            return Constant(KOBWBValue(numerator), "i" + std::to_string(numerator));
        }
        const KOBWBFraction fraction = KOBWBCreateFraction(numerator, denominator, static_cast<int>(piPower), 1);
        return Constant(KOBWBValue(fraction), "f" + std::to_string(numerator) + "/" + std::to_string(denominator) +
                                                  "p" + std::to_string(piPower));
    }
    // An integer past the integer constants, exactly where the factory can write it.
    if (coefficient.IsExact())
        if (KOBWBExpression* exact = KOBWBWriteLargeInteger(factory, coefficient.GetExact())) return exact;
    // Real constants are told apart by their bits.
    const double value = coefficient.ToDouble();
    std::string key(1 + sizeof value, 'r');
    std::memcpy(&key[1], &value, sizeof value);
    return Constant(KOBWBValue(value), key);
}

namespace {

// Whether WriteCoefficient writes the coefficient as one integer or fraction constant
// that reads back as the same exact number with the same power of Pi.
bool WrittenAsExactConstant(const KOBWBCoefficient& coefficient, long long piPower) {
    int numerator = 0, denominator = 1;
    return ExactConstantParts(coefficient, piPower, numerator, denominator);
}

bool TermsReadBack(const KOBWBPolynomial& polynomial) {
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms())
        if (!WrittenAsExactConstant(term.coefficient, PiPower(term.monomial))) return false;
    return true;
}

} // namespace

bool Impl::ReadsBack(const KOBWBPolynomial& polynomial) {
    if (!TermsReadBack(polynomial)) return false;
    // Reading an operator's node interns the atom again from its arguments read
    // back, so those must read back too; a reciprocal's power is read as the
    // reciprocal of an expanded power, and constants and nodes equal only to
    // themselves become new atoms.
    for (int atom : Reachable(polynomial)) {
        const Atom& record = atoms[static_cast<size_t>(atom)];
        if (record.kind != AtomKind::Pi && record.kind != AtomKind::Variable && record.kind != AtomKind::Operator)
            return false;
        // An operator is written with its arguments in place of its node's children.
        if (record.kind == AtomKind::Operator &&
            static_cast<size_t>(record.node->GetNbOfChildren()) != record.arguments.size())
            return false;
        for (const KOBWBPolynomial& argument : record.arguments)
            if (!TermsReadBack(argument)) return false;
    }
    return true;
}

// Rule 9: the variables themselves, and an atom's first node when its arguments are
// written back as they were; in temporary storage only a node made there, a lasting
// node being copied.
KOBWBExpression* Impl::WriteAtom(int atom) {
    Atom& record = atoms[static_cast<size_t>(atom)];
    if (record.written) return record.written;
    switch (record.kind) {
    case AtomKind::Pi: record.written = factory.CreateConstantPi(); break;
    case AtomKind::Variable:
    case AtomKind::Value:
    case AtomKind::Opaque: record.written = record.node; break;
    case AtomKind::Reciprocal: record.written = factory.CreateQuotient(one, WriteDenominator(atom)); break;
    case AtomKind::Operator: {
        KOBWBExpression* node = record.node;
        const int count = static_cast<int>(record.arguments.size());
        std::vector<KOBWBExpression*> arguments;
        bool same = node->GetNbOfChildren() == count && (!factory.IsUsingTemporaryStorage() || node->IsTemporary());
        for (int i = 0; i < count; ++i) {
            arguments.push_back(Write(record.arguments[static_cast<size_t>(i)]));
            same = same && node->GetChild(i) == arguments.back();
        }
        KOBWBExpression* copy = same ? node : factory.CreateOperator(node);
        if (copy && copy->GetNbOfChildren() == count) {
            for (int i = 0; i < count && copy != node; ++i)
                if (copy->GetChild(i) != arguments[static_cast<size_t>(i)]) copy->ReplaceChild(i, arguments[static_cast<size_t>(i)]);
            record.written = copy;
        } else {
            record.written = node;
        }
        break;
    }
    }
    return record.written;
}

// Written once per reciprocal: nested quotients name the denominators of their own
// denominators, and writing those anew at each occurrence would grow the expression
// exponentially with the depth of the nesting.
KOBWBExpression* Impl::WriteDenominator(int reciprocal) {
    Atom& record = atoms[static_cast<size_t>(reciprocal)];
    if (!record.writtenDenominator) record.writtenDenominator = Write(record.arguments[0]);
    return record.writtenDenominator;
}

// Shared like the atoms themselves: reading the written expression back then reads
// each power once, not once per term that holds it.
KOBWBExpression* Impl::WritePower(int atom, KOBWBExpression* base, long long exponent) {
    Atom& record = atoms[static_cast<size_t>(atom)];
    if (!record.writtenPower || record.writtenExponent != exponent) {
        record.writtenPower = factory.CreatePower(base, WriteCoefficient(KOBWBCoefficient(exponent), 0));
        record.writtenExponent = exponent;
    }
    return record.writtenPower;
}

KOBWBExpression* Impl::Write(const KOBWBPolynomial& polynomial) {
    // The atoms the polynomial needs, with the atoms of their arguments; an atom's
    // arguments only name earlier atoms, so writing them in number order writes
    // arguments first, without recursion.
    std::vector<int> needed, pending;
    const unsigned stamp = ++noteStamp;
    const auto note = [&](const KOBWBPolynomial& p) {
        for (const KOBWBPolynomialTerm& term : p.GetTerms())
            for (const KOBWBMonomialFactor& factor : term.monomial) {
                Atom& atom = atoms[static_cast<size_t>(factor.atom)];
                if (atom.written || atom.writtenDenominator || atom.noted == stamp) continue;
                atom.noted = stamp;
                pending.push_back(factor.atom);
            }
    };
    note(polynomial);
    while (!pending.empty()) {
        const int atom = pending.back();
        pending.pop_back();
        needed.push_back(atom);
        for (const KOBWBPolynomial& argument : atoms[static_cast<size_t>(atom)].arguments) note(argument);
    }
    std::sort(needed.begin(), needed.end());
    for (int atom : needed)
        if (atoms[static_cast<size_t>(atom)].kind != AtomKind::Reciprocal) WriteAtom(atom);

    bool hasReciprocals = false;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms())
        for (const KOBWBMonomialFactor& factor : term.monomial)
            hasReciprocals = hasReciprocals || atoms[static_cast<size_t>(factor.atom)].kind == AtomKind::Reciprocal;
    if (!hasReciprocals) {
        std::vector<const KOBWBPolynomialTerm*> terms;
        terms.reserve(static_cast<size_t>(polynomial.GetNbOfTerms()));
        for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) terms.push_back(&term);
        return WriteTerms(terms);
    }
    // Rule 7: terms gathered by their reciprocal factors, the group without any first.
    std::map<std::string, std::vector<const KOBWBPolynomialTerm*>> groups;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        KOBWBMonomial reciprocals;
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (atoms[static_cast<size_t>(factor.atom)].kind == AtomKind::Reciprocal) reciprocals.push_back(factor);
        groups[reciprocals.empty() ? std::string() : MonomialKey(reciprocals)].push_back(&term);
    }
    std::vector<KOBWBExpression*> parts;
    for (const auto& group : groups) {
        KOBWBExpression* numerator = WriteTerms(group.second);
        if (group.first.empty()) {
            if (numerator->GetType() == KOBWBSumType && groups.size() > 1)
                for (int i = 0; i < numerator->GetNbOfChildren(); ++i) parts.push_back(numerator->GetChild(i));
            else
                parts.push_back(numerator);
            continue;
        }
        // The denominators of the group, in key order.
        std::vector<KOBWBMonomialFactor> reciprocals;
        for (const KOBWBMonomialFactor& factor : group.second.front()->monomial)
            if (atoms[static_cast<size_t>(factor.atom)].kind == AtomKind::Reciprocal) reciprocals.push_back(factor);
        std::sort(reciprocals.begin(), reciprocals.end(),
                  [this](const KOBWBMonomialFactor& a, const KOBWBMonomialFactor& b) { return KeyLess(a.atom, b.atom); });
        std::vector<KOBWBExpression*> denominators;
        for (const KOBWBMonomialFactor& factor : reciprocals) {
            KOBWBExpression* denominator = WriteDenominator(factor.atom);
            if (factor.exponent != 1)
                denominator = WritePower(factor.atom, denominator, factor.exponent);
            denominators.push_back(denominator);
        }
        KOBWBExpression* denominator = denominators.size() == 1
                                           ? denominators[0]
                                           : factory.CreateProduct(static_cast<int>(denominators.size()), denominators.data());
        parts.push_back(factory.CreateQuotient(numerator, denominator));
    }
    if (parts.empty()) return zero;
    if (parts.size() == 1) return parts[0];
    return factory.CreateSum(static_cast<int>(parts.size()), parts.data());
}

Impl::OrderedMonomial Impl::Ordered(const KOBWBMonomial& monomial) {
    OrderedMonomial ordered{{}, 0, PiPower(monomial)};
    for (const KOBWBMonomialFactor& factor : monomial) {
        const AtomKind kind = atoms[static_cast<size_t>(factor.atom)].kind;
        if (kind == AtomKind::Pi || kind == AtomKind::Reciprocal) continue;
        ordered.factors.push_back(factor);
        ordered.degree += factor.exponent;
    }
    // Rule 5: the factors of a term in the atom order.
    if (ordered.factors.size() > 1)
        std::sort(ordered.factors.begin(), ordered.factors.end(),
                  [this](const KOBWBMonomialFactor& a, const KOBWBMonomialFactor& b) { return KeyLess(a.atom, b.atom); });
    return ordered;
}

bool Impl::Precedes(const OrderedMonomial& a, const OrderedMonomial& b) {
    // Rule 6: descending degree, then lexicographic in the atom order (a higher
    // power of an atom first), then descending Pi power.
    if (a.degree != b.degree) return a.degree > b.degree;
    for (size_t i = 0; i < a.factors.size() && i < b.factors.size(); ++i) {
        const int atomA = a.factors[i].atom, atomB = b.factors[i].atom;
        if (atomA != atomB) return KeyLess(atomA, atomB);
        if (a.factors[i].exponent != b.factors[i].exponent) return a.factors[i].exponent > b.factors[i].exponent;
    }
    if (a.factors.size() != b.factors.size()) return a.factors.size() > b.factors.size();
    return a.piPower > b.piPower;
}

KOBWBExpression* Impl::WriteTerms(const std::vector<const KOBWBPolynomialTerm*>& terms) {
    struct Written {
        const KOBWBPolynomialTerm* term;
        OrderedMonomial order;
    };
    std::vector<Written> ordered;
    ordered.reserve(terms.size());
    for (const KOBWBPolynomialTerm* term : terms) ordered.push_back({term, Ordered(term->monomial)});
    std::sort(ordered.begin(), ordered.end(), [this](const Written& a, const Written& b) { return Precedes(a.order, b.order); });
    std::vector<KOBWBExpression*> summands, factors;
    summands.reserve(ordered.size());
    factors.reserve(4);
    for (const Written& w : ordered) {
        factors.clear();
        const KOBWBCoefficient& coefficient = w.term->coefficient;
        const long long piPower = w.order.piPower;
        // Rules 2 and 3: one constant for the coefficient, first, left out when it is 1.
        const bool plainOne = coefficient.IsExact() && coefficient.IsOne() && piPower == 0;
        if (!plainOne || w.order.factors.empty()) {
            factors.push_back(WriteCoefficient(coefficient, piPower));
            int n = 0, d = 1;
            const bool folded = ExactConstantParts(coefficient, piPower, n, d);
            if (!folded && piPower != 0) factors.push_back(WriteCoefficient(KOBWBCoefficient(1), piPower));
        }
        for (const KOBWBMonomialFactor& factor : w.order.factors) {
            KOBWBExpression* atom = atoms[static_cast<size_t>(factor.atom)].written;
            // Rule 4: an atom to a power n > 1 is the power node of the atom and n.
            if (factor.exponent != 1) atom = WritePower(factor.atom, atom, factor.exponent);
            factors.push_back(atom);
        }
        summands.push_back(factors.size() == 1 ? factors[0]
                                               : factory.CreateProduct(static_cast<int>(factors.size()), factors.data()));
    }
    // Rules 1 and 8: the zero polynomial is 0, a sum of one term that term, any
    // other sum one n-ary node.
    if (summands.empty()) return zero;
    if (summands.size() == 1) return summands[0];
    return factory.CreateSum(static_cast<int>(summands.size()), summands.data());
}
