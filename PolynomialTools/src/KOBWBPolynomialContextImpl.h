#ifndef KOBWBPolynomialContextImpl_h
#define KOBWBPolynomialContextImpl_h

#include "KOBWBExpressionType.h"
#include "KOBWBPolynomialContext.h"

#include <string>
#include <unordered_map>
#include <vector>

// What a rewriting context keeps: its atoms with their canonical keys, the
// polynomials of the nodes it has read, and the nodes it has written.
struct KOBWBPolynomialContext::Impl {
    enum class AtomKind { Pi, Variable, Value, Operator, Reciprocal, Opaque };

    struct Atom {
        AtomKind kind;
        // The variable, the constant, or the first operator node read as this atom.
        KOBWBExpression* node;
        // The operator's arguments as polynomials; the denominator of a reciprocal.
        std::vector<KOBWBPolynomial> arguments;
        // The canonical key: equal keys are equal atoms, and keys sort in the
        // canonical atom order.
        std::string key;
        // The node written for the atom, once written.
        KOBWBExpression* written = nullptr;
    };

    Impl(KOBWBFactory& factory, KOBWBExpression* zero, KOBWBExpression* one);

    // The atom of the key, made with the other fields when new.
    int InternAtom(AtomKind kind, KOBWBExpression* node, std::vector<KOBWBPolynomial> arguments, std::string key);
    int VariableAtom(KOBWBVariable* variable);
    // The canonical key of a polynomial: its terms' keys in sorted order.
    std::string PolynomialKey(const KOBWBPolynomial& polynomial) const;
    std::string MonomialKey(const KOBWBMonomial& monomial) const;

    // Reading (KOBWBPolynomialReader).
    bool Read(KOBWBExpression* root, KOBWBPolynomial& result);
    KOBWBPolynomial ReadNode(KOBWBExpression* node);
    KOBWBPolynomial OperatorAtom(KOBWBExpression* node, std::vector<KOBWBPolynomial> arguments);
    KOBWBPolynomial Quotient(KOBWBPolynomial numerator, const KOBWBPolynomial& denominator, KOBWBExpression* node);
    KOBWBPolynomial Power(const KOBWBPolynomial& base, const KOBWBPolynomial& exponent, KOBWBExpression* node);
    KOBWBPolynomial Product(KOBWBExpression* node, const std::vector<KOBWBPolynomial>& factors);
    const KOBWBPolynomial* Known(KOBWBExpression* node) const;

    // Writing (KOBWBPolynomialWriter).
    KOBWBExpression* Write(const KOBWBPolynomial& polynomial);
    KOBWBExpression* WriteAtom(int atom);
    KOBWBExpression* WriteCoefficient(const KOBWBCoefficient& coefficient, long long piPower);
    KOBWBExpression* WriteTerms(const std::vector<const KOBWBPolynomialTerm*>& terms, bool skipReciprocals);
    KOBWBExpression* Constant(const KOBWBValue& value, const std::string& key);
    // Ranks of atoms in the canonical order, for the atoms written so far.
    int Rank(int atom);

    bool DependsOn(int atom, const KOBWBVariable* variable) const;

    KOBWBFactory& factory;
    KOBWBExpression* zero;
    KOBWBExpression* one;
    int maxTerms = 10000;
    std::vector<Atom> atoms;
    std::unordered_map<std::string, int> atomByKey;
    std::unordered_map<const KOBWBVariable*, int> atomByVariable;
    std::unordered_map<const KOBWBExpression*, KOBWBPolynomial> read;
    std::unordered_map<std::string, KOBWBExpression*> constants;
    // Canonical ranks: refreshed when atoms were added since the last ranking.
    std::vector<int> ranks;
};

#endif
