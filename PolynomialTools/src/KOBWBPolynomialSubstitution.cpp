#include "KOBWBPolynomialContextImpl.h"

#include "KOBWBConstant.h"
#include "KOBWBFactory.h"
#include "KOBWBVariable.h"

#include <algorithm>
#include <deque>
#include <type_traits>

// Substitution of polynomials for atoms, inside the arguments of other atoms too:
// an atom whose arguments change is read again from its new arguments.

using Impl = KOBWBPolynomialContext::Impl;

// Atom records are moved, never copied, when atoms grows: their arguments stay where
// they are, and a substitution reads them there while it adds atoms.
static_assert(std::is_nothrow_move_constructible<Impl::Atom>::value, "atom records must move without copying");

const std::vector<int>& Impl::Reachable(const KOBWBPolynomial& polynomial) {
    std::vector<int>& reached = reachedScratch;
    std::vector<int>& pending = pendingScratch;
    reached.clear();
    reachedForeign = false;
    // Atoms are marked with a stamp of this walk rather than kept in a set.
    const unsigned stamp = ++reachStamp;
    const auto note = [&](const KOBWBPolynomial& p) {
        for (const KOBWBPolynomialTerm& term : p.GetTerms())
            for (const KOBWBMonomialFactor& factor : term.monomial) {
                if (factor.atom < 0 || static_cast<size_t>(factor.atom) >= atoms.size()) {
                    reachedForeign = true;
                    continue;
                }
                Atom& atom = atoms[static_cast<size_t>(factor.atom)];
                if (atom.reached == stamp) continue;
                atom.reached = stamp;
                pending.push_back(factor.atom);
            }
    };
    note(polynomial);
    while (!pending.empty()) {
        const int atom = pending.back();
        pending.pop_back();
        reached.push_back(atom);
        for (const KOBWBPolynomial& argument : atoms[static_cast<size_t>(atom)].arguments) note(argument);
    }
    std::sort(reached.begin(), reached.end());
    return reached;
}

namespace {

// replacement^exponent; a power past the budget, or without a value as a real, is
// written as a power node and read back as one atom. The replacement itself stands for its first power, except where
// the budget (of one term) would not let a sum through.
KOBWBPolynomial ReplacementPower(Impl& impl, const KOBWBPolynomial& replacement, long long exponent) {
    KOBWBPolynomial power;
    if (!impl.ExpandedPower(replacement, exponent, power)) {
        KOBWBExpression* node = impl.factory.CreatePower(impl.Write(replacement), static_cast<int>(exponent));
        impl.Read(node, power);
    }
    return power;
}

bool IsOwnFirstPower(const Impl& impl, const KOBWBPolynomial& replacement, long long exponent) {
    return exponent == 1 && (replacement.GetNbOfTerms() == 1 || impl.maxTerms > 1);
}

// The polynomial with the atoms that have a replacement replaced. find(atom) gives
// the replacement of an atom, null for none.
template <class Find>
KOBWBPolynomial Replace(Impl& impl, const KOBWBPolynomial& polynomial, Find find) {
    // The terms it will have, where a term's one replaced atom stands for itself:
    // one allocation of the size the result keeps.
    size_t expected = 0;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        size_t pieces = 1;
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (const KOBWBPolynomial* replacement = find(factor.atom))
                if (IsOwnFirstPower(impl, *replacement, factor.exponent))
                    pieces *= static_cast<size_t>(replacement->GetNbOfTerms());
        expected += pieces;
    }
    std::vector<KOBWBPolynomialTerm> terms;
    terms.reserve(expected);
    bool anyReplaced = false;
    KOBWBMonomial kept;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms()) {
        kept.clear();
        int replaced = 0;
        const KOBWBMonomialFactor* single = nullptr;
        const KOBWBPolynomial* singleReplacement = nullptr;
        for (const KOBWBMonomialFactor& factor : term.monomial) {
            const KOBWBPolynomial* replacement = find(factor.atom);
            if (!replacement) {
                kept.push_back(factor);
                continue;
            }
            ++replaced;
            single = &factor;
            singleReplacement = replacement;
        }
        // A term without replaced atoms is kept as it is; the others are collected once.
        if (replaced == 0) {
            terms.push_back(term);
            continue;
        }
        anyReplaced = true;
        if (replaced == 1) {
            // One replaced atom: the pieces of its power times the term's coefficient
            // and its other atoms, without forming their product as a polynomial.
            KOBWBPolynomial power;
            const KOBWBPolynomial* pieces = singleReplacement;
            if (!IsOwnFirstPower(impl, *singleReplacement, single->exponent)) {
                power = ReplacementPower(impl, *singleReplacement, single->exponent);
                pieces = &power;
            }
            for (const KOBWBPolynomialTerm& piece : pieces->GetTerms()) {
                KOBWBCoefficient coefficient(piece.coefficient);
                coefficient *= term.coefficient;
                // A real product can underflow to zero.
                if (coefficient.IsZero()) continue;
                terms.push_back({KOBWBMultiplyMonomials(piece.monomial, kept), std::move(coefficient)});
            }
            continue;
        }
        KOBWBPolynomial product(term.coefficient);
        for (const KOBWBMonomialFactor& factor : term.monomial)
            if (const KOBWBPolynomial* replacement = find(factor.atom))
                product = KOBWBPolynomial::Multiply(product, ReplacementPower(impl, *replacement, factor.exponent));
        for (const KOBWBPolynomialTerm& piece : product.GetTerms())
            terms.push_back({KOBWBMultiplyMonomials(piece.monomial, kept), piece.coefficient});
    }
    if (!anyReplaced) return polynomial;
    return KOBWBPolynomial::FromTerms(std::move(terms));
}

} // namespace

KOBWBPolynomial Impl::Substitute(const KOBWBPolynomial& polynomial,
                                 const std::vector<std::pair<int, const KOBWBPolynomial*>>& substitutions) {
    // The replacements are kept on the atoms, under a stamp of this substitution; the
    // first one given for an atom counts.
    const unsigned stamp = ++substituteStamp;
    const auto give = [this, stamp](int atom, const KOBWBPolynomial* replacement) {
        Atom& record = atoms[static_cast<size_t>(atom)];
        if (record.replacedIn == stamp) return;
        record.replacedIn = stamp;
        record.replacement = replacement;
    };
    // Replacing may add atoms, which may move the records: each look-up indexes afresh.
    const auto find = [this, stamp](int atom) -> const KOBWBPolynomial* {
        const Atom& record = atoms[static_cast<size_t>(atom)];
        return record.replacedIn == stamp ? record.replacement : nullptr;
    };
    for (const auto& substitution : substitutions) give(substitution.first, substitution.second);
    // Without atoms that have arguments (a polynomial in variables), the atoms are
    // replaced where they stand.
    bool nested = false;
    for (const KOBWBPolynomialTerm& term : polynomial.GetTerms())
        for (const KOBWBMonomialFactor& factor : term.monomial)
            nested = nested || !atoms[static_cast<size_t>(factor.atom)].arguments.empty();
    if (!nested) return Replace(*this, polynomial, find);
    // A copy: the list is the context's, and reading atoms again below may walk others.
    const std::vector<int> reachable = Reachable(polynomial);
    if (std::none_of(reachable.begin(), reachable.end(), [&find](int atom) { return find(atom) != nullptr; }))
        return polynomial;
    // The atoms read again, at addresses that stay put while more are added.
    std::deque<KOBWBPolynomial> rereadings;
    // Arguments name only earlier atoms: in number order, an atom's arguments have
    // their replacements before the atom is read again.
    for (int atom : reachable) {
        const Atom& record = atoms[static_cast<size_t>(atom)];
        if (record.arguments.empty() || find(atom)) continue;
        bool changed = false;
        for (const KOBWBPolynomial& argument : record.arguments)
            for (const KOBWBPolynomialTerm& term : argument.GetTerms())
                for (const KOBWBMonomialFactor& factor : term.monomial) changed = changed || find(factor.atom);
        if (!changed) continue;
        // Replacing and reading may add atoms, which may move the record: keep what it
        // says. Its arguments stay where they are, and are replaced from there.
        KOBWBExpression* node = record.node;
        const bool reciprocal = record.kind == AtomKind::Reciprocal;
        const KOBWBPolynomial* const first = record.arguments.data();
        const size_t count = record.arguments.size();
        std::vector<KOBWBPolynomial> arguments;
        arguments.reserve(count);
        for (size_t i = 0; i < count; ++i) arguments.push_back(Replace(*this, first[i], find));
        std::vector<const KOBWBPolynomial*> pointers;
        for (const KOBWBPolynomial& argument : arguments) pointers.push_back(&argument);
        rereadings.push_back(reciprocal ? Quotient(KOBWBPolynomial(KOBWBCoefficient(1)), arguments[0], node)
                                        : ReadOperator(node, pointers));
        give(atom, &rereadings.back());
    }
    return Replace(*this, polynomial, find);
}
