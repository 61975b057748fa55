#ifndef KOBWBPolynomialContextImpl_h
#define KOBWBPolynomialContextImpl_h

#include "KOBLVRHashTable.h"
#include "KOBWBExpressionType.h"
#include "KOBWBPolynomialContext.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

// What a rewriting context keeps: its atoms with their canonical keys, the
// polynomials of the nodes it has read, and the nodes it has written.
struct KOBWBPolynomialContext::Impl {
    enum class AtomKind : std::uint8_t { Pi, Variable, Value, Operator, Reciprocal, Opaque };

    // What the passes over atoms read and mark, kept small (64 bytes). What
    // only finding an atom again or ordering it needs is kept aside, in identities
    // (for the few atoms that have one) and keys.
    struct Atom {
        // The variable, the constant, or the first operator node read as this atom.
        KOBWBExpression* node;
        // The operator's arguments as polynomials; the denominator of a reciprocal.
        std::vector<KOBWBPolynomial> arguments;
        // The last substitution that gave the atom a replacement, and that replacement.
        const KOBWBPolynomial* replacement = nullptr;
        unsigned replacedIn = 0;
        // The last writing that noted the atom as needed.
        unsigned noted = 0;
        // The last walk of Reachable that met the atom.
        unsigned reached = 0;
        AtomKind kind;
        // Whether the atom has its key in keys.
        bool keyed = false;
        // The node written for the atom, once written.
        KOBWBExpression* written = nullptr;
        // A reciprocal's denominator, once written: every quotient by it shares it.
        KOBWBExpression* writtenDenominator = nullptr;
        // The last power node written for the atom (for a reciprocal, for its
        // denominator) and its exponent: the terms with that power share it.
        KOBWBExpression* writtenPower = nullptr;
        long long writtenExponent = 0;
    };
    // With the kind, the node's type and the arguments: what makes two atoms equal;
    // none (no parameters, no black box) for most atoms.
    struct AtomIdentity {
        std::vector<double> parameters;
        const void* blackBox = nullptr;
    };
    // The canonical key, made when the atom is first ordered: keys sort in the
    // canonical atom order. The digest of what the key spells out, made with it,
    // is the key of an atom too long to be spelled out.
    struct AtomKey {
        std::string key;
        std::uint64_t digest = 0;
    };

    Impl(KOBWBFactory& factory, KOBWBExpression* zero, KOBWBExpression* one);

    // The atom equal to the one described, made when new (KOBWBPolynomialAtoms).
    int InternAtom(AtomKind kind, KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments);
    // A new atom, at the end of atoms, and of identities when it has one.
    int AddAtom(AtomKind kind, KOBWBExpression* node, std::vector<KOBWBPolynomial> arguments, AtomIdentity identity);
    // The identity of an atom, null when it has none.
    const AtomIdentity* Identity(int atom) const;
    // An atom equal only to itself.
    int UniqueAtom(AtomKind kind, KOBWBExpression* node);
    int VariableAtom(KOBWBVariable* variable);
    const std::string& Key(int atom);
    std::string MakeKey(int atom);
    // The canonical atom order.
    bool KeyLess(int a, int b);
    // The canonical key of a polynomial: its terms' keys in sorted order.
    std::string PolynomialKey(const KOBWBPolynomial& polynomial);
    // The digest of a polynomial whose atoms are keyed: one function of its terms,
    // whatever their order.
    std::uint64_t PolynomialDigest(const KOBWBPolynomial& polynomial) const;
    std::string MonomialKey(const KOBWBMonomial& monomial);
    bool DependsOn(int atom, const KOBWBVariable* variable) const;

    // Reading (KOBWBPolynomialReader).
    bool Read(KOBWBExpression* root, KOBWBPolynomial& result);
    KOBWBPolynomial ReadNode(KOBWBExpression* node);
    // The polynomial of an operator node of the kind of node over these arguments.
    KOBWBPolynomial ReadOperator(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments);
    // Substitution of polynomials for atoms (KOBWBPolynomialSubstitution).
    KOBWBPolynomial Substitute(const KOBWBPolynomial& polynomial,
                               const std::vector<std::pair<int, const KOBWBPolynomial*>>& substitutions);
    // The atoms reachable from the polynomial through the arguments of its atoms, in
    // number order; a list the context keeps, good until the next call. Atoms the
    // context does not have are left out, and reachedForeign tells there were some.
    const std::vector<int>& Reachable(const KOBWBPolynomial& polynomial);
    KOBWBPolynomial OperatorAtom(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments);
    // The atom of a product or power left unexpanded by the budget, noted in pastBudget.
    KOBWBPolynomial PastBudget(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& arguments);
    KOBWBPolynomial Quotient(const KOBWBPolynomial& numerator, const KOBWBPolynomial& denominator, KOBWBExpression* node);
    KOBWBPolynomial Power(const KOBWBPolynomial& base, const KOBWBPolynomial& exponent, KOBWBExpression* node);
    // base^exponent (exponent >= 0) expanded into power, false (power untouched) when it
    // would pass the term budget or have no value as a real: the one test every expanded
    // power passes, read or substituted.
    bool ExpandedPower(const KOBWBPolynomial& base, long long exponent, KOBWBPolynomial& power) const;
    KOBWBPolynomial Product(KOBWBExpression* node, const std::vector<const KOBWBPolynomial*>& factors);
    const KOBWBPolynomial* Known(KOBWBExpression* node) const;

    // Writing (KOBWBPolynomialWriter).
    KOBWBExpression* Write(const KOBWBPolynomial& polynomial);
    KOBWBExpression* WriteAtom(int atom);
    KOBWBExpression* WriteDenominator(int reciprocal);
    // base^exponent for the atom, base being its written node or its denominator.
    KOBWBExpression* WritePower(int atom, KOBWBExpression* base, long long exponent);
    KOBWBExpression* WriteCoefficient(const KOBWBCoefficient& coefficient, long long piPower);
    // A monomial as the canonical order sees it: its ordinary factors in the atom
    // order, their degree, and its power of Pi.
    struct OrderedMonomial {
        KOBWBMonomial factors;
        long long degree;
        long long piPower;
    };
    OrderedMonomial Ordered(const KOBWBMonomial& monomial);
    // The canonical order of terms.
    bool Precedes(const OrderedMonomial& a, const OrderedMonomial& b);
    // The sum of the terms, their reciprocal factors left out.
    KOBWBExpression* WriteTerms(const std::vector<const KOBWBPolynomialTerm*>& terms);
    KOBWBExpression* Constant(const KOBWBValue& value, const std::string& key);
    // Whether reading what Write makes of the polynomial gives it back (see ReadsBackExactly).
    bool ReadsBack(const KOBWBPolynomial& polynomial);

    KOBWBFactory& factory;
    KOBWBExpression* zero;
    KOBWBExpression* one;
    int maxTerms = 10000;
    // Whether the budget left a product or power unexpanded since the last reset.
    bool pastBudget = false;
    // Products of two terms the current reading has done, and at most how many it may do.
    long long readingWork = 0;
    long long MaxReadingWork() const { return 32LL * maxTerms; }
    unsigned noteStamp = 0;
    unsigned reachStamp = 0;
    unsigned substituteStamp = 0;
    // Scratch storage of reading, kept between expressions.
    std::vector<const KOBWBPolynomial*> argumentScratch;
    // The list Reachable answers with, and its walk's pending atoms.
    std::vector<int> reachedScratch, pendingScratch;
    bool reachedForeign = false;
    struct Frame {
        KOBWBExpression* node;
        int reading;
        int next;
    };
    std::vector<Frame> frames;
    std::vector<Atom> atoms;
    // The identities of the atoms that have one, in atom number order.
    std::vector<std::pair<int, AtomIdentity>> identities;
    // By atom number, as far as the atoms made when one was last keyed.
    std::vector<AtomKey> keys;
    // The atoms found again by their structure, by hash.
    KOBLVRHashTable<int> atomTable;
    // The atom of each variable of the factory that was read, with its polynomial,
    // found by index: a context costs what it reads, not what the factory holds.
    struct VariableEntry {
        int index = -1;
        int atom = -1;
        const KOBWBPolynomial* polynomial = nullptr;
    };
    KOBLVRHashTable<VariableEntry> variableTable;
    std::deque<KOBWBPolynomial> variablePolynomials;
    // The polynomials of the nodes read since the readings were last forgotten, by
    // node: forgetting clears the table in one step and keeps its storage.
    struct NodeReading {
        const KOBWBExpression* node = nullptr;
        int reading = -1;
    };
    // A node's polynomial: its own, or one the context keeps for every occurrence
    // of a variable or of a small integer.
    struct Reading {
        KOBWBPolynomial polynomial;
        const KOBWBPolynomial* shared = nullptr;
        bool done = false;
    };
    KOBLVRHashTable<NodeReading> readTable;
    std::vector<Reading> readings;
    void ForgetReadings() {
        readTable.Clear();
        readings.clear();
    }
    // The place of node in readings, -1 when it was not read in this generation.
    int FindReading(const KOBWBExpression* node) const;
    int AddReading(const KOBWBExpression* node);
    // The polynomial kept for a variable or a small integer constant; null for other nodes.
    const KOBWBPolynomial* SharedLeaf(KOBWBExpression* node);
    static constexpr int smallInteger = 16;
    std::unique_ptr<KOBWBPolynomial> integerPolynomials[2 * smallInteger + 1];
    std::unordered_map<std::string, KOBWBExpression*> constants;
};

#endif
