#ifndef KOBWBPolynomialContext_h
#define KOBWBPolynomialContext_h

#include "KOBWBDataLists.h"
#include "KOBWBPolynomial.h"

#include <memory>
#include <utility>
#include <vector>

class KOBWBExpression;
class KOBWBFactory;
class KOBWBVariable;

// The rewriting context of one factory: it reads expressions as polynomials over
// atoms and writes polynomials back as expressions in one canonical form.
//
// Atoms are what a polynomial is built on: the variables, Pi, and every
// sub-expression that is not polynomial (sin(u), sqrt(u), u^v, u^(1/2), a
// black-box call, an interval constant, the reciprocal 1/d of a non-constant
// denominator), identified structurally: the arguments of an atom are read as
// polynomials first, so sin(x + 1) and sin(1 + x) are one atom. Pi is the one
// atom that may carry a negative exponent.
//
// Numbers. Integer constants and exact fractions (with their power of Pi) are
// exact rationals that never overflow. A real constant is exact when it is a
// binary fraction whose denominator is at most 2^20 (2.0, 0.5, 0.375); any other
// real (0.1, 1/3 rounded, a measured length) is a real coefficient, and every
// sum or product that involves a real coefficient is folded with real
// arithmetic and stays real. Identities are decided exactly: an exact and a real
// coefficient are never taken as equal.
//
// Expansion budget. Products and integer powers are expanded while no polynomial
// formed on the way has more than GetMaxTerms() terms, and while every coefficient
// stays within KOBWBMaxReal (a coefficient past it has no value in the library);
// past either bound the product or power stays one atom over its expanded arguments.
// One expression's reading also does about 32 x GetMaxTerms() products of two terms
// at most: past that, its remaining products and powers of sums stay atoms, so an
// expression whose products nest deeply is read in bounded time.
//
// The canonical form written by ToExpression:
//  1. Like terms are collected and terms whose coefficient is zero dropped; the
//     zero polynomial is the integer constant 0.
//  2. A coefficient is one constant: an integer constant when it is an integer
//     of 32 bits; an exact fraction {n, d, k} when it is n/d x Pi^k with n and d
//     of 32 bits; otherwise the nearest real constant, followed by the fraction
//     {1, 1, k} when Pi^k remains.
//  3. A term is the product of its coefficient and its atoms, the coefficient
//     first; a coefficient 1 is left out, -1 is kept as the factor -1; a term
//     of one factor is that factor itself.
//  4. An atom to the power 1 is the atom; to a power n > 1 it is the power node
//     of the atom and the integer constant n.
//  5. Atoms are ordered by their canonical key, one function of the atom (no
//     address, nothing that depends on what was read before): variables first by
//     index, then the other constants (intervals, enumerations) by value, then
//     operators by type code, parameters and arguments, a black-box call by the
//     black box's name and then the order of its declaration in the factory;
//     then atoms whose key would pass 2,048 characters, by a digest of their
//     structure; last the nodes that are not read (an integral), by a digest of
//     their graph.
//  6. Terms are ordered by descending degree, then lexicographically in the
//     atom order (x^2, x y, x, y^2, y, then the constant term).
//  7. A quotient whose denominator is not constant is kept as a quotient: the
//     terms that share the same denominators are gathered into one quotient
//     (numerator sum) / (denominator). The denominator is made monic (the
//     coefficient of its first term in the order of rule 6 is moved to the
//     numerator), so that x/(2y) and x/(4y) share the denominator y. Quotients follow the other terms. A
//     division by a constant multiplies by its inverse; nothing is cancelled
//     across a quotient (x/x stays x/x, which is undefined at 0).
//  8. A sum of one term is that term; other sums are one n-ary sum node.
//  9. Nodes are reused: the variables themselves, the context's 0 and 1, one
//     node per constant value, and an atom's original node when its arguments
//     are written back as they were. While the factory keeps temporary storage,
//     only an original node made there is reused: a lasting one is copied, so
//     that a caller may change the written expression in place without changing
//     the nodes it read.
class KOBWBX_API KOBWBPolynomialContext {
public:
    // zero and one are integer constants 0 and 1 of the factory. The context is
    // invalid (every call answers null or false) when either is null.
    KOBWBPolynomialContext(KOBWBFactory& factory, KOBWBExpression* zero, KOBWBExpression* one);
    // Makes its own constants 0 and 1.
    explicit KOBWBPolynomialContext(KOBWBFactory& factory);
    ~KOBWBPolynomialContext();
    KOBWBPolynomialContext(const KOBWBPolynomialContext&) = delete;
    KOBWBPolynomialContext& operator=(const KOBWBPolynomialContext&) = delete;

    bool IsValid() const;
    KOBWBFactory& GetFactory() const;
    // The expansion budget in terms; 10,000 unless set (values below 1 count as 1).
    int GetMaxTerms() const;
    void SetMaxTerms(int maxTerms);

    // The atom number of Pi.
    static constexpr int piAtom = 0;
    // The atom of a variable of the factory; -1 for null or a variable of another factory.
    int GetVariableAtom(KOBWBVariable* variable);
    int GetNbOfAtoms() const;
    // Whether the atom is the variable or has it among its arguments.
    bool AtomDependsOn(int atom, KOBWBVariable* variable) const;

    // The polynomial of an expression of the factory; false (result untouched) for
    // null or an expression of another factory.
    bool ToPolynomial(KOBWBExpression* expression, KOBWBPolynomial& result);
    // Whether the last ToPolynomial (and so Simplify, AreIdentical,
    // ExtractCoefficients, Substitute) or SubstituteVariable left a product or power
    // as an atom because its expansion passed the budget: the result is then exact
    // but not fully expanded, and identities past the budget go unnoticed.
    bool ExceededBudget() const;
    // The canonical expression of a polynomial of this context; null when it
    // names atoms the context does not have.
    KOBWBExpression* ToExpression(const KOBWBPolynomial& polynomial);
    // Whether reading ToExpression(polynomial) gives the polynomial back, atom for
    // atom, so that a caller that keeps the polynomial with the expression need not
    // read the expression again: true when every coefficient, in the polynomial and
    // in the arguments of its atoms, is exact and written as one integer or fraction
    // constant, and every atom is Pi, a variable, or an operator over such arguments
    // (not a reciprocal, nor a constant or node that is only equal to itself).
    bool ReadsBackExactly(const KOBWBPolynomial& polynomial);
    // Whether the polynomial, or an argument of one of its atoms, has an atom for a
    // node the context does not read into (an integral, an operator without
    // children, a variable of no factory list): such an atom is written as that
    // node, with the graph below it. True for an atom the context does not have.
    bool HasOpaqueAtoms(const KOBWBPolynomial& polynomial);
    // ToExpression(ToPolynomial(expression)); null for null or a foreign expression.
    KOBWBExpression* Simplify(KOBWBExpression* expression);
    // Whether expression - other is exactly zero.
    bool AreIdentical(KOBWBExpression* expression, KOBWBExpression* other);

    // The coefficients c0, c1, ..., cd of expression as a polynomial in x, lowest
    // degree first and each written canonically (a missing degree gives 0), so
    // that expression = c0 + c1 x + ... + cd x^d. False, the list untouched, when
    // expression is not a polynomial in x (x under a function, in a denominator,
    // or to a negative or non-integer power), or for null or foreign arguments.
    bool ExtractCoefficients(KOBWBExpression* expression, KOBWBVariable* x, KOBLVRListPKOBWBExpression& coefficients);

    // The polynomial with x replaced by the polynomial by, inside atoms too: an atom
    // whose arguments change is read again (a power may then expand, a quotient
    // become a product); products and powers past the budget stay atoms. The
    // polynomial unchanged for null or a variable of another factory, and when the
    // polynomial or by names atoms the context does not have.
    KOBWBPolynomial SubstituteVariable(const KOBWBPolynomial& polynomial, KOBWBVariable* x, const KOBWBPolynomial& by);
    // The same for several variables at once, each pair a variable and the polynomial
    // put in for it; a polynomial put in is not itself substituted into. Pairs with a
    // null or foreign variable, or a null polynomial or one naming atoms the context
    // does not have, are left out; the polynomial naming such atoms is unchanged.
    KOBWBPolynomial SubstituteVariables(const KOBWBPolynomial& polynomial,
                                        const std::vector<std::pair<KOBWBVariable*, const KOBWBPolynomial*>>& substitutions);
    // The variables that occur in the polynomial, inside atoms too, in index order;
    // none when it names atoms the context does not have.
    std::vector<KOBWBVariable*> GetVariables(const KOBWBPolynomial& polynomial);
    // The same into variables (its earlier content replaced), whose room a caller that
    // asks for many polynomials' variables keeps from one call to the next.
    void GetVariables(const KOBWBPolynomial& polynomial, std::vector<KOBWBVariable*>& variables);
    // The variable of an atom; null for the other atoms.
    KOBWBVariable* GetAtomVariable(int atom) const;

    // Replaces, below root, every child that is identical to x (by algebra, not by
    // pointer) by value, walking each node's children first to last and descending
    // into the children that are not x; root itself is never replaced. Returns the
    // simplified root, or null for null arguments.
    KOBWBExpression* Substitute(KOBWBExpression* root, KOBWBVariable* x, KOBWBExpression* value);

    struct Impl;

private:
    std::unique_ptr<Impl> m_impl;
};

#endif
