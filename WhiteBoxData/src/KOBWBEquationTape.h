#ifndef KOBWBEquationTape_h
#define KOBWBEquationTape_h

#include "KOBWBEquationType.h"
#include "KOBWBValue.h"

#include <vector>

class KOBWBEnvironment;
class KOBWBEquation;
class KOBWBExpression;
class KOBWBVariable;

// The graph of an equation laid out for revising it: every node once, parents before
// children, each node's children given by their positions.
namespace kobwb {

struct EquationTape {
    KOBWBEquationType type = KOBWBEqUndefined;
    // nodes[0] is the root.
    std::vector<KOBWBExpression*> nodes;
    // The children of node i are children[firstChild[i]] to children[firstChild[i + 1] - 1];
    // a node with a missing child is laid out without children, so nothing narrows below it.
    std::vector<int> firstChild;
    std::vector<int> children;
    // The positions of the variable nodes.
    std::vector<int> variables;
};

EquationTape MakeTape(const KOBWBEquation& equation);

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
    bool NarrowChildren(const EquationTape& tape, int node, KOBWBEnvironment& scratch);
    bool NarrowFolded(const EquationTape& tape, int node, KOBWBEnvironment& scratch);
    // Gives the child its narrowed domain; false when it is empty.
    bool Store(int child, KOBWBValue&& domain, KOBWBEnvironment& scratch);

    std::vector<KOBWBValue> m_domains;
    std::vector<char> m_narrowed;
    std::vector<KOBWBValue> m_prefix;
    std::vector<KOBWBValue> m_suffix;
};

} // namespace kobwb

#endif
