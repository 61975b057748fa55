#ifndef KOBWBEquationTape_h
#define KOBWBEquationTape_h

#include "KOBWBEquationType.h"
#include "KOBWBOperatorTable.h"
#include "KOBWBValue.h"

#include <cstddef>
#include <utility>
#include <vector>

class KOBWBEnvironment;
class KOBWBEquation;
class KOBWBExpression;
class KOBWBVariable;

// The graph of an equation laid out for revising it (its tape): every node once,
// parents before children, each node's children given by their positions.
namespace kobwb {

// A run of elements of a tape store.
template <class T> struct Span {
    const T* data = nullptr;
    int size = 0;

    const T* begin() const { return data; }
    const T* end() const { return data + size; }
    const T& operator[](int i) const { return data[i]; }
};

// The tapes of many equations side by side, so that revising equations one after the
// other reads memory in order.
struct TapeStore {
    std::vector<KOBWBExpression*> nodes;
    std::vector<KOBWBExpressionType> codes;
    std::vector<int> firstChild;
    std::vector<int> children;
    std::vector<int> variables;
    std::vector<std::pair<int, KOBWBValue>> constants;
};

// Where an equation's tape lies in its store.
struct TapePlace {
    KOBWBEquationType type = KOBWBEqUndefined;
    std::size_t node = 0;
    int count = 0;
    std::size_t firstChild = 0;
    std::size_t child = 0;
    std::size_t variable = 0;
    int variables = 0;
    std::size_t constant = 0;
    int constants = 0;
};

// An equation's tape, read from its store.
struct EquationTape {
    KOBWBEquationType type = KOBWBEqUndefined;
    int count = 0;
    // nodes[0] is the root.
    KOBWBExpression* const* nodes = nullptr;
    // The code of every node, read once so that a revision reads the leaves alone.
    const KOBWBExpressionType* codes = nullptr;
    // The children of node i are children[firstChild[i]] to children[firstChild[i + 1] - 1],
    // given by their positions; a node with a missing child is laid out without
    // children, so nothing narrows below it.
    const int* firstChild = nullptr;
    const int* children = nullptr;
    // The positions of the variable nodes, and the constants with their positions.
    Span<int> variables;
    Span<std::pair<int, KOBWBValue>> constants;
};

// Lays the equation out at the end of the store.
TapePlace AppendTape(TapeStore& store, const KOBWBEquation& equation);
EquationTape TapeAt(const TapeStore& store, const TapePlace& place);

// A variable whose domain a revision narrowed, with the part of its width removed.
struct NarrowedVariable {
    KOBWBVariable* variable;
    double ratio;
};

// The HC4-revise pass of one equation over the variables' current domains, with the
// storage it reuses from one revision to the next.
class TapeReviser {
public:
    // Narrows and writes back the domains of the equation's variables, listing those
    // narrowed; false when a domain became empty.
    bool Revise(const EquationTape& tape, const KOBWBEnvironment& environment,
                std::vector<NarrowedVariable>& narrowed);

private:
    // Every node's domain from its children's, computed as the node's own evaluation
    // computes its value (with the same functions of the operator table), on the tape,
    // so that only the leaves are read from the graph.
    void Evaluate(const EquationTape& tape, KOBWBEnvironment& scratch);
    void EvaluateNode(const EquationTape& tape, int node, KOBWBEnvironment& scratch);
    bool NarrowChildren(const EquationTape& tape, int node, KOBWBEnvironment& scratch);
    bool NarrowFolded(const EquationTape& tape, int node, KOBWBEnvironment& scratch);
    // Gives the child its narrowed domain; false when it is empty.
    bool Store(int child, KOBWBValue&& domain, KOBWBEnvironment& scratch);
    bool Store(int child, const KOBWBRealInterval& domain);
    // The real forms of the projections, used when the node's domain and the narrowed
    // child's are real intervals and the other child a real interval or a single number,
    // as the value-level projections would: true when they applied, consistent telling
    // whether something is left.
    bool NarrowRealUnary(const Projections& projections, int node, int child,
                         KOBWBEnvironment& scratch, bool& consistent);
    bool NarrowRealBinary(const Projections& projections, int node, int narrowed, int other,
                          bool first, KOBWBEnvironment& scratch, bool& consistent);

    std::vector<KOBWBValue> m_domains;
    std::vector<char> m_narrowed;
    std::vector<KOBWBValue> m_prefix;
    std::vector<KOBWBValue> m_suffix;
};

} // namespace kobwb

#endif
